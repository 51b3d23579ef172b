// The network of this computer, and a firewall that it may have.
#include <gtest/gtest.h>

#include <filesystem>

#include "src/adapters/linux/firewall.h"
#include "src/adapters/posix/network.h"
#include "tests/support/files.h"
#include "tests/support/tcp_port.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;

class LinuxNetworkTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  PosixNetwork network{
      [root = RootFolder(folder.path().string())](uint16_t port) { return visibleFirewall(root, port); }};
};

TEST_F(LinuxNetworkTest, AListenerAcceptsAtItsAddress) {
  const TcpListener listener;
  EXPECT_TRUE(network.connects("127.0.0.1", static_cast<uint16_t>(listener.port()), 500ms));
}

TEST_F(LinuxNetworkTest, AnAddressLeadsToItself) {
  const NameLookup lookup = network.lookUp("192.0.2.7", 5s);
  EXPECT_TRUE(lookup.answered);
  EXPECT_EQ(lookup.addresses, std::vector<std::string>{"192.0.2.7"});
}

// The question goes on without the caller, so the limit is kept whatever the name service does.
TEST_F(LinuxNetworkTest, ALimitOfNothingIsKept) {
  const auto before = std::chrono::steady_clock::now();
  network.lookUp("no-such-name.invalid", 0ms);
  EXPECT_LT(std::chrono::steady_clock::now() - before, 200ms);
}

TEST_F(LinuxNetworkTest, AFirewallThatIsOnIsSeenByItsSettings) {
  const auto settings = folder.path() / "etc/ufw/ufw.conf";
  std::filesystem::create_directories(settings.parent_path());
  writeFile(settings, "# comment\nENABLED=no\nLOGLEVEL=low\n");
  EXPECT_EQ(network.firewall(4073).name, "");
  writeFile(settings, "# comment\nENABLED=yes\nLOGLEVEL=low\n");
  EXPECT_EQ(network.firewall(4073).name, "ufw");
  EXPECT_EQ(network.firewall(4073).view, FirewallView::notKnown);
}

}  // namespace
}  // namespace norvik
