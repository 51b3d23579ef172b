// The contract of the network.
#include <algorithm>
#include <thread>

#include "tests/adapters/contract/computer_under_test.h"
#include "tests/support/tcp_port.h"

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

}  // namespace
}  // namespace norvik
