// Reads a firewall's settings.
#include "src/adapters/linux/firewall.h"

#include <sstream>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr const char* kUfwSettings = "/etc/ufw/ufw.conf";
constexpr std::size_t kSettingsLimit = 65536;

}  // namespace

Firewall visibleFirewall(const RootFolder& root) {
  std::istringstream lines(
      readRegularFile(root.onDisk(kUfwSettings), kSettingsLimit).value_or(std::string()));
  for (std::string line; std::getline(lines, line);) {
    if (line == "ENABLED=yes") return {FirewallView::notKnown, "ufw"};
  }
  return {};
}

}  // namespace norvik
