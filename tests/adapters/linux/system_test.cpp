// The Linux adapter's smaller platform interfaces beyond the contract, and the settings of a sandbox.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>

#include "src/adapters/linux/linux_computer.h"
#include "tests/support/captured_syslog.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

using Numbers = std::array<int32_t, 3>;

TEST(LinuxSystemVersionTest, ReadsTheNumbersOfARelease) {
  EXPECT_EQ(releaseNumbers("6.1.0-18-amd64"), (Numbers{6, 1, 0}));
  EXPECT_EQ(releaseNumbers("5.10.219"), (Numbers{5, 10, 219}));
  EXPECT_EQ(releaseNumbers("4.4.0.1"), (Numbers{4, 4, 0}));
  EXPECT_EQ(releaseNumbers("7"), (Numbers{7, 0, 0}));
  EXPECT_EQ(releaseNumbers("6.2-rc1"), (Numbers{6, 2, 0}));
  EXPECT_EQ(releaseNumbers("6..2"), (Numbers{6, 0, 0}));
  EXPECT_EQ(releaseNumbers("-1.2"), std::nullopt);
  EXPECT_EQ(releaseNumbers("rolling"), std::nullopt);
  EXPECT_EQ(releaseNumbers(""), std::nullopt);
}

TEST(LinuxSystemVersionTest, IsThatOfTheKernel) {
  utsname names{};
  ASSERT_EQ(::uname(&names), 0);
  int32_t major = -7;
  ASSERT_EQ(LinuxSystemVersion().Gestalt(fourCharCode("sys1"), major), noErr);
  EXPECT_EQ(major, std::atoi(names.release));
}

TEST(LinuxHostTest, ListsTheAddressesOfTheInterfacesInTheirOrder) {
  ifaddrs* list = nullptr;
  ASSERT_EQ(::getifaddrs(&list), 0);
  std::vector<std::string> expected;
  for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET) continue;
    std::array<char, INET_ADDRSTRLEN> text{};
    const auto* address = reinterpret_cast<const sockaddr_in*>(entry->ifa_addr);
    ::inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size());
    expected.emplace_back(text.data());
  }
  ::freeifaddrs(list);
  std::vector<std::string> found;
  for (const auto& address : PosixHost().addresses()) {
    if (address && address->find(':') == std::string::npos) found.push_back(*address);
  }
  EXPECT_EQ(found, expected);
}

TEST(LinuxHostTest, HasTheNameOfTheSystem) {
  utsname names{};
  ASSERT_EQ(::uname(&names), 0);
  std::array<char, 256> name{};
  ASSERT_EQ(PosixHost().gethostname(name.data(), name.size()), 0);
  EXPECT_STREQ(name.data(), names.nodename);
}

class LinuxBundlesTest : public testing::Test {
 protected:
  void putInfo(const std::string& bundle, const std::string& identifier, const std::string& more = {}) {
    folder.put(bundle + "/Contents/Info.plist",
               "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>" + identifier +
                   "</string>" + more + "</dict></plist>");
  }
  CFBundleRef find(std::string_view identifier) {
    return bundles.CFBundleGetBundleWithIdentifier(identifier);
  }

  SandboxFolder folder;
  LinuxBundles bundles{RootFolder(folder.path()), {"/Applications", "/Library/PreferencePanes", "/missing"}};
};

TEST_F(LinuxBundlesTest, AreFoundByTheNamesOfTheirFolders) {
  putInfo("/Applications/A.app", "a");
  putInfo("/Library/PreferencePanes/B.prefPane", "b");
  putInfo("/Library/PreferencePanes/C.bundle", "c");
  putInfo("/Applications/D.folder", "d");
  fs::create_directories(folder.onDisk("/Applications/Empty.app"));
  EXPECT_NE(find("a"), nullptr);
  EXPECT_NE(find("b"), nullptr);
  EXPECT_NE(find("c"), nullptr);
  EXPECT_EQ(find("d"), nullptr);
}

TEST_F(LinuxBundlesTest, HaveTextsAndResources) {
  putInfo("/Applications/A.app", "a",
          "<key>Number</key><integer>5</integer><key>Text</key><string>five</string>");
  folder.put("/Applications/A.app/Contents/Resources/icon.tiff", "picture");
  const CFBundleRef bundle = find("a");
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(bundles.CFBundleGetValueForInfoDictionaryKey(bundle, "Text"), "five");
  EXPECT_EQ(bundles.CFBundleGetValueForInfoDictionaryKey(bundle, "Number"), std::nullopt);
  EXPECT_EQ(bundles.resource(bundle, "icon", "tiff"), "picture");
  EXPECT_EQ(bundles.resource(bundle, "icon", "png"), std::nullopt);
}

TEST_F(LinuxBundlesTest, AreGoneWhenTheirFolderIs) {
  putInfo("/Applications/A.app", "a");
  ASSERT_NE(find("a"), nullptr);
  fs::remove_all(folder.onDisk("/Applications/A.app"));
  EXPECT_EQ(find("a"), nullptr);
}

TEST_F(LinuxBundlesTest, KnowThePaneByItsIdentifier) {
  EXPECT_EQ(find("com.veltrane.norvik.prefpane"), bundles.paneBundle());
  EXPECT_EQ(bundles.CFBundleGetValueForInfoDictionaryKey(bundles.paneBundle(), "NSPrincipalClass"),
            "NVKServerPrefs");
}

TEST_F(LinuxBundlesTest, HaveAMainOneWithoutADictionaryForAProgramOutsideOfBundles) {
  const CFBundleRef main = bundles.CFBundleGetMainBundle();
  EXPECT_NE(main, nullptr);
  EXPECT_NE(main, bundles.paneBundle());
  EXPECT_EQ(bundles.CFBundleGetValueForInfoDictionaryKey(main, "CFBundleIdentifier"), std::nullopt);
  EXPECT_EQ(bundles.resource(main, "authlock", "tiff"), std::nullopt);
}

TEST(LinuxNotificationsTest, GiveUpOnASilentBus) {
  const SandboxFolder folder;
  const Descriptor silent(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, folder.onDisk("/bus").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(silent.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(silent.number(), 1), 0);
  const auto before = std::chrono::steady_clock::now();
  LinuxNotificationCenter center(folder.busAddress());
  center.postNotificationName("Name", nullptr, 0);
  EXPECT_FALSE(center.lastWasDelivered());
  const auto waited = std::chrono::steady_clock::now() - before;
  EXPECT_GE(waited, std::chrono::seconds(1));  // it did wait
  EXPECT_LT(waited, std::chrono::seconds(5));
}

TEST(LinuxNotificationsTest, GoNowhereWithoutABus) {
  const auto before = std::chrono::steady_clock::now();
  for (const char* address : {"", "nonsense", "unix:path=/missing/bus"}) {
    LinuxNotificationCenter center(address);
    center.postNotificationName("Name", nullptr, 0);
    EXPECT_FALSE(center.lastWasDelivered()) << address;
  }
  LinuxNotificationCenter("unix:path=/missing/bus").postNotificationName("not UTF-8: \xff", nullptr, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
}

TEST(LinuxSystemLogTest, PassesLinesToSyslogUnchanged) {
  capturedSyslog().clear();
  LinuxSystemLog log("norvik", nullptr);
  log.syslog(kLogError, "Norvik[E]: 100 %s of %n %d");
  log.syslog(4, std::string_view("a part of it", 6));
  EXPECT_EQ(capturedSyslog(), (std::vector<std::string>{"3 Norvik[E]: 100 %s of %n %d", "4 a part"}));
}

TEST(LinuxSystemLogTest, ReportsTheAssertionAndItsPlace) {
  capturedSyslog().clear();
  LinuxSystemLog log("norvik", nullptr);
  LinuxAssertionHandler(log).handleFailureInFunction("save", "settings.cpp", 7, "no 100 %s");
  EXPECT_EQ(capturedSyslog(),
            std::vector<std::string>{"3 Norvik[E]: Assertion failure in save, settings.cpp:7: no 100 %s"});
}

class SandboxOptionsTest : public testing::Test {
 protected:
  LinuxComputerOptions options() { return sandboxOptions(folder.path()); }

  SandboxFolder folder;
};

TEST_F(SandboxOptionsTest, ComeFromTheFilesOfTheSandbox) {
  folder.put("/.norvik/bus", "unix:path=/x/bus,guid=1\n");
  folder.put("/.norvik/clock", "12.5\n");
  EXPECT_EQ(options().root, folder.path());
  EXPECT_EQ(options().home, "/Users/user");
  EXPECT_EQ(options().busAddress, "unix:path=/x/bus,guid=1");
  EXPECT_EQ(options().speed, 12.5);
  EXPECT_EQ(options().bundleFolders, std::vector<std::string>{"/Applications"});
  EXPECT_EQ(options().user, ::getuid());
}

TEST_F(SandboxOptionsTest, AreForAFolderWithASandboxInIt) {
  EXPECT_FALSE(isSandbox(folder.path()));
  folder.put("/.norvik/clock", "1\n");
  EXPECT_TRUE(isSandbox(folder.path()));
  EXPECT_TRUE(isSandbox(folder.path() + "/"));
  EXPECT_FALSE(isSandbox(folder.path() + "/tmp"));
  EXPECT_FALSE(isSandbox(folder.path() + "/missing"));
  folder.put("/tmp/.norvik", "a file in the place of the folder");
  EXPECT_FALSE(isSandbox(folder.path() + "/tmp"));
}

TEST_F(SandboxOptionsTest, HaveDefaultsForMissingFiles) {
  EXPECT_EQ(options().busAddress, "");
  EXPECT_EQ(options().speed, 1);
  EXPECT_FALSE(options().authorization());
}

TEST_F(SandboxOptionsTest, TakeNoClockThatMakesNoSense) {
  for (const char* text : {"", "fast", "0", "-2", "nan", "inf", "2x", "1e300"}) {
    folder.put("/.norvik/clock", text);
    EXPECT_EQ(options().speed, 1) << text;
  }
}

TEST_F(SandboxOptionsTest, DecideEachRequestAnew) {
  const auto policy = options().authorization;
  folder.put("/.norvik/authorization", "granted\n");
  EXPECT_TRUE(policy());
  folder.put("/.norvik/authorization", "refused\n");
  EXPECT_FALSE(policy());
  folder.put("/.norvik/authorization", "perhaps\n");
  EXPECT_FALSE(policy());
}

TEST_F(SandboxOptionsTest, MakeAComputerOfTheSandbox) {
  folder.put("/etc/launchd.conf", "text");
  LinuxComputer computer(options());
  EXPECT_EQ(computer.propertyLists.stringByExpandingTildeInPath("~/x"), "/Users/user/x");
  const FileRef file = computer.files.fopen("/etc/launchd.conf", FileMode::readBinary);
  ASSERT_NE(file, nullptr);
  computer.files.fclose(file);
}

TEST(SystemOptionsTest, AreThoseOfTheUser) {
  const LinuxComputerOptions options = systemOptions();
  EXPECT_EQ(options.root, "");
  EXPECT_TRUE(options.home.starts_with('/')) << options.home;
  EXPECT_FALSE(options.authorization);
}

}  // namespace
}  // namespace norvik
