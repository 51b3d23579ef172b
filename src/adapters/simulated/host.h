// The name, the addresses and the system version of the simulated computer.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "src/server/mac/platform/host.h"
#include "src/server/mac/platform/system_version.h"

namespace norvik {

class SimulatedHost : public Host {
 public:
  // None makes the query fail.
  void setHostName(std::optional<std::string> name) { name_ = std::move(name); }
  void setAddresses(std::vector<std::optional<std::string>> addresses) { addresses_ = std::move(addresses); }

  int gethostname(char* name, std::size_t size) override;
  std::vector<std::optional<std::string>> addresses() override { return addresses_; }

 private:
  std::optional<std::string> name_ = "mac.example.com";
  std::vector<std::optional<std::string>> addresses_ = {"fe80::1%en0", "127.0.0.1", "192.168.1.5"};
};

class SimulatedSystemVersion : public SystemVersion {
 public:
  // Major, minor and bug-fix version.
  using Parts = std::array<std::optional<int32_t>, 3>;

  // The query of a part that is none fails.
  void setParts(const Parts& parts) { parts_ = parts; }

  OSErr Gestalt(OSType selector, int32_t& response) override;

 private:
  Parts parts_ = {10, 6, 8};
};

}  // namespace norvik
