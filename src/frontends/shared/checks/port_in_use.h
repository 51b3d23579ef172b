// Whether a program of this computer listens on a port. Asks the system by trying to take the port for a
// moment.
#pragma once

#include <cstdint>

namespace norvik {

// True where the port is taken. A port that cannot be tried, such as one that only the super-user may take,
// counts as free. Does not block.
bool portInUse(int64_t port);

}  // namespace norvik
