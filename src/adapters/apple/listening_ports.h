// Who listens on a port, as far as this system lets its users see: another user's sockets, as the daemon's
// are, are shown to nobody.
#pragma once

#include "src/adapters/services/listening_ports.h"

namespace norvik {

class AppleListeningPorts : public ListeningPorts {
 public:
  // Nothing: the system does not show it.
  std::optional<std::set<uint16_t>> portsOf(int32_t pid) override;
  // Somebody unknown, where a connection is accepted.
  std::optional<PortHolder> holderOf(uint16_t port) override;
  // Blocks for at most half a second.
  bool accepts(uint16_t port) override;
};

}  // namespace norvik
