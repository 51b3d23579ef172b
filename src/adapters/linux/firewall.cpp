// Reads a firewall's settings.
#include "src/adapters/linux/firewall.h"

#include <sstream>

#include "src/adapters/linux/firewalld.h"
#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr const char* kUfwSettings = "/etc/ufw/ufw.conf";
constexpr std::size_t kSettingsLimit = 65536;
constexpr std::chrono::milliseconds kLimit(1000);

bool isUfwOn(const RootFolder& root) {
  std::istringstream lines(
      readRegularFile(root.onDisk(kUfwSettings), kSettingsLimit).value_or(std::string()));
  for (std::string line; std::getline(lines, line);) {
    if (line == "ENABLED=yes") return true;
  }
  return false;
}

}  // namespace

Firewall visibleFirewall(const RootFolder& root, uint16_t port) {
  if (isUfwOn(root)) return {FirewallView::notKnown, "ufw"};
  if (!root.folder().empty()) return {};
  return askFirewalld(port, kLimit).value_or(Firewall());
}

}  // namespace norvik
