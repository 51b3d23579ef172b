// Whether the server daemon is running.
#pragma once

#include <cstdint>

namespace norvik {

// How many dots are counted while the daemon starts or stops, one a second.
inline constexpr int kWaitingDots = 15;   // at most, while it has not come up or gone down
inline constexpr int kSettlingDots = 10;  // always after them, so that it has settled

// The daemon's process id as its pid file has it, or -1 if it is not running. A file without a number
// gives 0, which counts as running. Reads the file on every call.
int32_t nvkd_pid();

}  // namespace norvik
