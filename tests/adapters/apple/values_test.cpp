// What the Mac's adapter makes of the system's values: numbers, bundles, ports.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "src/adapters/apple/property_list_values.h"
#include "src/adapters/posix/descriptors.h"
#include "tests/adapters/apple/apple_under_test.h"
#include "tests/support/tcp_port.h"

namespace norvik {
namespace {

// The largest number reads as -1, and is not.
TEST(AppleValues, KeepTheSignOfEveryNumber) {
  const AppleUnderTest mac;
  for (const PropertyList& value :
       {PropertyList(UINT64_MAX), PropertyList(int64_t{-1}), PropertyList(uint64_t{1} << 63),
        PropertyList(INT64_MIN), PropertyList(INT64_MAX), PropertyList(-0.0), PropertyList(-1.0)}) {
    const Owned<CFTypeRef> list = coreList(value);
    ASSERT_TRUE(list);
    EXPECT_EQ(valueOf(list.get()), value);
  }
}

TEST(AppleValues, AreNoneForBytesThatAreNoText) {
  const AppleUnderTest mac;
  EXPECT_FALSE(coreList(PropertyList("caf\xc3")));
  EXPECT_FALSE(coreList(PropertyList(PropertyList::Array{PropertyList("good"), PropertyList("\xff")})));
  EXPECT_FALSE(coreList(PropertyList(PropertyList::Dictionary{{"\xff", PropertyList("good")}})));
}

TEST(AppleValues, OfAnInfoDictionaryAreTextsOrMissing) {
  AppleUnderTest mac;
  Bundles& bundles = mac.interfaces().bundles;
  EXPECT_EQ(bundles.CFBundleGetValueForInfoDictionaryKey(bundles.paneBundle(), "NVKNumber"), std::nullopt);
}

TEST(AppleValues, OfTheSystemsVersionComeFromWhatFollowsGestaltWhereItIs) {
  for (const auto& [calls, major] : {std::pair{AppleCalls::present, 14}, {AppleCalls::classic, 10}}) {
    AppleUnderTest mac(calls);
    int32_t value = 0;
    EXPECT_EQ(mac.interfaces().systemVersion.Gestalt(fourCharCode("sys1"), value), noErr);
    EXPECT_EQ(value, major);
  }
}

TEST(AppleValues, OfThePortsAreThoseThatAConnectionShows) {
  AppleUnderTest mac;
  ListeningPorts& ports = mac.interfaces().services.ports;
  const auto unused = static_cast<uint16_t>(freePort());
  EXPECT_FALSE(ports.accepts(unused));
  EXPECT_FALSE(ports.holderOf(unused));
  EXPECT_EQ(ports.portsOf(1), std::nullopt);
  const Descriptor socket(::socket(AF_INET, SOCK_STREAM, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  ASSERT_EQ(::bind(socket.number(), generic, size), 0);
  ASSERT_EQ(::listen(socket.number(), 1), 0);
  ASSERT_EQ(::getsockname(socket.number(), generic, &size), 0);
  EXPECT_TRUE(ports.accepts(ntohs(address.sin_port)));
  const auto holder = ports.holderOf(ntohs(address.sin_port));
  ASSERT_TRUE(holder);
  EXPECT_EQ(holder->pid, std::nullopt);
  EXPECT_EQ(holder->program, "");
}

}  // namespace
}  // namespace norvik
