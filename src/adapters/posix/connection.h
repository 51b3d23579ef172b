// A TCP connection that is tried and closed at once.
#pragma once

#include <sys/socket.h>

#include <chrono>
#include <cstdint>

namespace norvik {

// Whether somebody accepts a connection to the address, which has this port. A port of this computer that
// nobody listens on is not accepted, whatever it connects to. Blocks until the limit.
bool acceptsConnection(const sockaddr& address, socklen_t size, uint16_t port,
                       std::chrono::milliseconds limit);

}  // namespace norvik
