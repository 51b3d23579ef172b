// The contracts of the smaller platform interfaces: host, system version, bundles, log, assertions,
// notifications.
#include <array>
#include <cstring>

#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

class HostContract : public ContractTest {};
INSTANTIATE_TEST_SUITE_P(Every, HostContract, everyAdapter(), adapterName);

TEST_P(HostContract, StoresAZeroTerminatedName) {
  std::array<char, 1024> name;
  name.fill('x');
  ASSERT_EQ(interfaces.host.gethostname(name.data(), name.size()), 0);
  const std::size_t length = ::strnlen(name.data(), name.size());
  EXPECT_GT(length, 0u);
  ASSERT_LT(length, name.size());
}

TEST_P(HostContract, CutsANameThatDoesNotFitOrFails) {
  std::array<char, 1024> name{};
  ASSERT_EQ(interfaces.host.gethostname(name.data(), name.size()), 0);
  std::array<char, 3> cut{'.', '.', '.'};
  const int result = interfaces.host.gethostname(cut.data(), 2);
  EXPECT_EQ(cut[2], '.');
  if (result == 0) {
    EXPECT_EQ(std::string_view(cut.data(), 2), std::string_view(name.data(), 2));
  } else {
    EXPECT_EQ(result, -1);
  }
}

TEST_P(HostContract, ListsAddressesAsTexts) {
  for (const auto& address : interfaces.host.addresses()) {
    if (!address) continue;
    EXPECT_EQ(address->find_first_of(" \t\n/"), std::string::npos) << *address;
    EXPECT_NE(address->find_first_of(".:"), std::string::npos) << *address;
  }
}

class SystemVersionContract : public ContractTest {};
INSTANTIATE_TEST_SUITE_P(Every, SystemVersionContract, everyAdapter(), adapterName);

TEST_P(SystemVersionContract, ReturnsTheThreeParts) {
  for (const OSType selector : {fourCharCode("sys1"), fourCharCode("sys2"), fourCharCode("sys3")}) {
    int32_t part = -7;
    EXPECT_EQ(interfaces.systemVersion.Gestalt(selector, part), noErr);
    EXPECT_GE(part, 0);
  }
}

TEST_P(SystemVersionContract, StoresNothingForAnUnknownSelector) {
  int32_t part = -7;
  EXPECT_NE(interfaces.systemVersion.Gestalt(fourCharCode("sys4"), part), noErr);
  EXPECT_EQ(part, -7);
}

class BundlesContract : public ContractTest {
 protected:
  std::optional<std::string> value(CFBundleRef bundle, std::string_view key) {
    return interfaces.bundles.CFBundleGetValueForInfoDictionaryKey(bundle, key);
  }
};
INSTANTIATE_TEST_SUITE_P(Every, BundlesContract, everyAdapter(), adapterName);

TEST_P(BundlesContract, HasAMainOneInEveryProgram) {
  const CFBundleRef main = interfaces.bundles.CFBundleGetMainBundle();
  ASSERT_NE(main, nullptr);
  EXPECT_EQ(interfaces.bundles.CFBundleGetMainBundle(), main);
  EXPECT_EQ(value(main, "NoSuchKey"), std::nullopt);
}

TEST_P(BundlesContract, FindsABundleByItsIdentifier) {
  computer->putBundle("com.example.one", {{"CFBundleShortVersionString", "1.2"}});
  computer->putBundle("com.example.two", {{"CFBundleShortVersionString", "2.3"}, {"CFBundleVersion", "45"}});
  const CFBundleRef two = interfaces.bundles.CFBundleGetBundleWithIdentifier("com.example.two");
  ASSERT_NE(two, nullptr);
  EXPECT_EQ(value(two, "CFBundleShortVersionString"), "2.3");
  EXPECT_EQ(value(two, "CFBundleVersion"), "45");
  EXPECT_EQ(interfaces.bundles.CFBundleGetBundleWithIdentifier("com.example.two"), two);
  EXPECT_NE(interfaces.bundles.CFBundleGetBundleWithIdentifier("com.example.one"), two);
}

TEST_P(BundlesContract, FindsNoUnknownBundle) {
  computer->putBundle("com.example.one", {});
  EXPECT_EQ(interfaces.bundles.CFBundleGetBundleWithIdentifier("com.example"), nullptr);
  EXPECT_EQ(interfaces.bundles.CFBundleGetBundleWithIdentifier("COM.EXAMPLE.ONE"), nullptr);
  EXPECT_EQ(interfaces.bundles.CFBundleGetBundleWithIdentifier(""), nullptr);
}

TEST_P(BundlesContract, HasNothingForAMissingKey) {
  computer->putBundle("com.example.one", {});
  const CFBundleRef bundle = interfaces.bundles.CFBundleGetBundleWithIdentifier("com.example.one");
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(value(bundle, "CFBundleShortVersionString"), std::nullopt);
  EXPECT_EQ(value(interfaces.bundles.paneBundle(), "NoSuchKey"), std::nullopt);
}

TEST_P(BundlesContract, HasThePanesOwnResources) {
  const CFBundleRef pane = interfaces.bundles.paneBundle();
  ASSERT_NE(pane, nullptr);
  for (const char* name : {"authlock", "authulock"}) {
    const auto picture = interfaces.bundles.resource(pane, name, "tiff");
    ASSERT_TRUE(picture) << name;
    const std::string_view order = std::string_view(*picture).substr(0, 2);
    EXPECT_TRUE(order == "II" || order == "MM") << name << " is no TIFF";
  }
  EXPECT_EQ(interfaces.bundles.resource(pane, "authlock", "nothing"), std::nullopt);
  EXPECT_EQ(interfaces.bundles.resource(pane, "nothing", "tiff"), std::nullopt);
}

TEST_P(BundlesContract, HasNothingForNoBundle) {
  EXPECT_EQ(value(nullptr, "CFBundleVersion"), std::nullopt);
  EXPECT_EQ(interfaces.bundles.resource(nullptr, "authlock", "tiff"), std::nullopt);
}

class LogContract : public ContractTest {};
INSTANTIATE_TEST_SUITE_P(Every, LogContract, everyAdapter(), adapterName);

TEST_P(LogContract, TakesLinesUnchanged) {
  interfaces.log.syslog(kLogError, "Norvik[E]: 100 %s of %n %d");
  interfaces.log.syslog(4, "");
  EXPECT_EQ(computer->logged(), (std::vector<std::string>{"3 Norvik[E]: 100 %s of %n %d", "4 "}));
}

TEST_P(LogContract, ReportsAFailedAssertionAndReturns) {
  EXPECT_EQ(computer->failedAssertions(), 0u);
  interfaces.assertions.handleFailureInFunction("saveUserConfig", "user_settings.cpp", 7, "100 %s");
  EXPECT_EQ(computer->failedAssertions(), 1u);
}

class NotificationsContract : public ContractTest {};
INSTANTIATE_TEST_SUITE_P(Every, NotificationsContract, everyAdapter(), adapterName);

TEST_P(NotificationsContract, ReachesEveryListener) {
  computer->listen();
  interfaces.notifications.postNotificationName(
      "NvkMunuUpdateSettingsNotification", nullptr,
      NSNotificationDeliverImmediately | NSNotificationPostToAllSessions);
  EXPECT_EQ(computer->posted(),
            std::vector<std::string>{"NvkMunuUpdateSettingsNotification object=null options=3"});
}

TEST_P(NotificationsContract, CarriesTheObject) {
  computer->listen();
  interfaces.notifications.postNotificationName("Name", "sender", 0);
  EXPECT_EQ(computer->posted(), std::vector<std::string>{"Name object=sender options=0"});
}

TEST_P(NotificationsContract, PostsUnseenWhereNobodyListens) {
  const auto before = computer->now();
  interfaces.notifications.postNotificationName("Name", nullptr, 0);
  EXPECT_LT(computer->now() - before, std::chrono::seconds(1));
}

}  // namespace
}  // namespace norvik
