// The contract of the network, over this computer's and the simulated one's; and what only this computer
// has.
#include <algorithm>
#include <filesystem>
#include <thread>

#include "src/adapters/linux/network.h"
#include "tests/adapters/contract/computer_under_test.h"
#include "tests/support/files.h"
#include "tests/support/tcp_port.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;

class NetworkContract : public ContractTest {
 protected:
  Network& network = interfaces.services.network;
};

TEST_P(NetworkContract, EachAddressHasItsNetworkAndDevice) {
  const auto addresses = network.addresses();
  const auto own = std::ranges::find(addresses, "127.0.0.1", &NetworkAddress::text);
  ASSERT_NE(own, addresses.end());
  EXPECT_EQ(own->network, "127.0.0.0/8");
  for (const NetworkAddress& address : addresses) {
    EXPECT_EQ(address.text.find('%'), std::string::npos) << address.text;
    EXPECT_NE(address.network.find('/'), std::string::npos) << address.text;
    EXPECT_NE(address.device, "") << address.text;
  }
}

TEST_P(NetworkContract, NobodyAcceptsWhereNobodyListens) {
  EXPECT_FALSE(network.connects("127.0.0.1", static_cast<uint16_t>(freePort()), 500ms));
}

TEST_P(NetworkContract, ATextThatIsNoAddressAcceptsNothing) {
  for (const char* text : {"", "localhost", "127.0.0", "127.0.0.1:80", "fe80::1%"})
    EXPECT_FALSE(network.connects(text, 1, 500ms)) << text;
}

TEST_P(NetworkContract, ANameThatNobodyHasLeadsNowhere) {
  EXPECT_EQ(network.lookUp("no-such-name.invalid", 5s).addresses, std::vector<std::string>{});
}

TEST_P(NetworkContract, WithoutAFirewallNothingIsKnown) {
  EXPECT_EQ(network.firewall(4073).view, FirewallView::notKnown);
  EXPECT_EQ(network.firewall(4073).name, "");
}

TEST_P(NetworkContract, MayBeAskedOnAnotherThread) {
  std::vector<NetworkAddress> found;
  std::thread([&] { found = network.addresses(); }).join();
  EXPECT_EQ(found.size(), network.addresses().size());
}

INSTANTIATE_TEST_SUITE_P(Adapters, NetworkContract, everyAdapter(), adapterName);

class LinuxNetworkTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  LinuxNetwork network{RootFolder(folder.path().string())};
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
