// The network as the system's own calls show it to any user.
#pragma once

#include "src/adapters/linux/root_folder.h"
#include "src/adapters/services/network.h"

namespace norvik {

// A sandbox has no network of its own: it shows that of this computer, and only the files of a firewall are
// its own.
class LinuxNetwork : public Network {
 public:
  explicit LinuxNetwork(RootFolder root) : root_(std::move(root)) {}

  std::vector<NetworkAddress> addresses() override;
  // The name service has no limit of its own; where it takes longer, the question is left behind in a thread.
  NameLookup lookUp(const std::string& name, std::chrono::milliseconds limit) override;
  bool connects(const std::string& address, uint16_t port, std::chrono::milliseconds limit) override;
  // The rules of a firewall may be read by root only. Only its being on is seen.
  Firewall firewall(uint16_t port) override;

 private:
  RootFolder root_;
};

}  // namespace norvik
