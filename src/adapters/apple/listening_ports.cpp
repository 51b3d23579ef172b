// Asks by connecting.
#include "src/adapters/apple/listening_ports.h"

#include "src/adapters/posix/local_connection.h"

namespace norvik {

std::optional<std::set<uint16_t>> AppleListeningPorts::portsOf(int32_t) {
  return std::nullopt;
}

std::optional<PortHolder> AppleListeningPorts::holderOf(uint16_t port) {
  return accepts(port) ? std::optional(PortHolder{}) : std::nullopt;
}

bool AppleListeningPorts::accepts(uint16_t port) {
  return acceptsConnections(port);
}

}  // namespace norvik
