// The firewall firewalld, which says over the system bus, to everybody, what it lets in.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "src/adapters/services/network.h"

namespace norvik {

// What it says of TCP connections to the port; nothing where it does not run. Anything that could decide
// otherwise, such as a rich rule, a policy or a zone that disagrees, makes the answer "not known". Never
// starts it. May be called on any thread; blocks until the limit at most.
std::optional<Firewall> askFirewalld(uint16_t port, std::chrono::milliseconds limit);

}  // namespace norvik
