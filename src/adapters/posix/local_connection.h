// Whether a server on this computer takes connections. Blocks for at most half a second.
#pragma once

#include <cstdint>

namespace norvik {

// Whether a connection from this computer to the port is accepted, on IPv4 or IPv6. Closes it at once.
bool acceptsConnections(uint16_t port);

}  // namespace norvik
