// Whether the server daemon runs.
#pragma once

#include <cstdint>

namespace norvik {

// The daemon's process id as its pid file has it, or -1 when it does not run. A file that names no number
// gives 0, which counts as running. Reads the file on every call.
int32_t nvkd_pid();

}  // namespace norvik
