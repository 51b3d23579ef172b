// The network as the system's own calls show it to any user.
#pragma once

#include <functional>

#include "src/adapters/services/network.h"

namespace norvik {

// A sandbox has no network of its own: it shows that of this computer.
class PosixNetwork : public Network {
 public:
  // What a firewall lets be seen; each system has its own. May be called on any thread.
  using FirewallOf = std::function<Firewall(uint16_t port)>;

  // Without a function nothing is known of a firewall.
  explicit PosixNetwork(FirewallOf firewall) : firewall_(std::move(firewall)) {}

  std::vector<NetworkAddress> addresses() override;
  // The name service has no limit of its own; where it takes longer, the question is left behind in a thread.
  NameLookup lookUp(const std::string& name, std::chrono::milliseconds limit) override;
  bool connects(const std::string& address, uint16_t port, std::chrono::milliseconds limit) override;
  Firewall firewall(uint16_t port) override;

 private:
  FirewallOf firewall_;
};

}  // namespace norvik
