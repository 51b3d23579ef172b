// The computer's name and its addresses, from the system.
#pragma once

#include "src/server/mac/platform/host.h"

namespace norvik {

class PosixHost : public Host {
 public:
  int gethostname(char* name, std::size_t size) override;
  std::vector<std::optional<std::string>> addresses() override;
};

}  // namespace norvik
