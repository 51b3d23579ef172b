// Whether the server daemon is running.
#pragma once

#include <cstdint>

namespace norvik {

// The daemon's process id as its pid file has it, or -1 if it is not running. A file without a number
// gives 0, which counts as running. Reads the file on every call.
int32_t nvkd_pid();

}  // namespace norvik
