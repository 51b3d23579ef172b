// A computer whose listening ports cannot be seen.
#pragma once

#include "src/adapters/services/listening_ports.h"

namespace norvik {

class UnseenPorts : public ListeningPorts {
 public:
  std::optional<std::set<uint16_t>> portsOf(int32_t) override { return std::nullopt; }
  std::optional<PortHolder> holderOf(uint16_t) override { return std::nullopt; }
  bool accepts(uint16_t) override { return false; }
};

}  // namespace norvik
