// The contract of what a front end asks of a computer beyond the platform interfaces: the change lock, the
// launched tools, the settings files and the delivery of notifications.
#include <array>
#include <csignal>
#include <regex>

#include "src/adapters/property_lists/codec.h"
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;
using End = ToolOutcome::End;

class ServicesContract : public ContractTest {
 protected:
  void TearDown() override { computer->waitForTools(); }

  // An authorization that an administrator has granted.
  AuthorizationRef granted() {
    const std::array<AuthorizationItem, 1> rights{{{"system.privilege.admin", "", 0}}};
    AuthorizationRef made = nullptr;
    EXPECT_EQ(interfaces.authorization.AuthorizationCreate({}, 0, made), errAuthorizationSuccess);
    EXPECT_EQ(
        interfaces.authorization.AuthorizationCopyRights(made, rights, kAuthorizationFlagInteractionAllowed),
        errAuthorizationSuccess);
    return made;
  }
  OSStatus start(const char* path, std::vector<const char*> arguments = {}, FileRef* pipe = nullptr) {
    arguments.push_back(nullptr);
    return interfaces.authorization.AuthorizationExecuteWithPrivileges(authorization, path, 0,
                                                                       arguments.data(), pipe);
  }
  // The outcomes when all tools have ended.
  std::vector<ToolOutcome> ended() {
    EXPECT_TRUE(services.tools.wait(10s));
    return services.tools.outcomes();
  }

  ComputerServices services = interfaces.services;
  AuthorizationRef authorization = granted();
};

INSTANTIATE_TEST_SUITE_P(Every, ServicesContract, everyAdapter(), adapterName);

// ---- The change lock

TEST_P(ServicesContract, LocksAtOnceWhereNobodyHoldsTheLock) {
  EXPECT_NE(services.locks.lock(0ms), nullptr);
}

TEST_P(ServicesContract, LocksOnceOnly) {
  auto lock = services.locks.lock(0ms);
  ASSERT_NE(lock, nullptr);
  EXPECT_EQ(services.locks.lock(20ms), nullptr);
  lock.reset();
  EXPECT_NE(services.locks.lock(0ms), nullptr);
}

TEST_P(ServicesContract, WaitsForTheLockUntilSomebodyElseGivesItUp) {
  computer->holdLockElsewhere(200ms);
  const auto before = computer->now();
  EXPECT_NE(services.locks.lock(10s), nullptr);
  EXPECT_GE(computer->now() - before, 150ms);
}

TEST_P(ServicesContract, WaitsForTheLockNoLongerThanTheLimit) {
  computer->holdLockElsewhere(30s);
  const auto before = computer->now();
  EXPECT_EQ(services.locks.lock(50ms), nullptr);
  EXPECT_GE(computer->now() - before, 50ms);
  EXPECT_LT(computer->now() - before, 20s);
}

TEST_P(ServicesContract, LeavesTheLockToTheToolsThatWereLaunchedUnderIt) {
  computer->putSlowTool("/usr/bin/defaults", 600ms);
  auto lock = services.locks.lock(0ms);
  ASSERT_NE(lock, nullptr);
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  lock.reset();
  EXPECT_EQ(services.locks.lock(50ms), nullptr);
  EXPECT_TRUE(services.tools.wait(10s));
  EXPECT_NE(services.locks.lock(0ms), nullptr);
}

TEST_P(ServicesContract, GivesTheLockToNoToolThatWasLaunchedWithoutIt) {
  computer->putSlowTool("/usr/bin/defaults", 600ms);
  services.locks.lock(0ms).reset();
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  EXPECT_NE(services.locks.lock(0ms), nullptr);
}

// ---- Launched tools

TEST_P(ServicesContract, KnowsNoToolBeforeTheFirst) {
  EXPECT_TRUE(services.tools.wait(0ms));
  EXPECT_TRUE(services.tools.outcomes().empty());
}

TEST_P(ServicesContract, TellsOfEachToolInOrder) {
  computer->putFile("/tmp/new", "x");
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/new", "/tmp/moved"}), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/chmod", {"600", "/tmp/moved"}), errAuthorizationSuccess);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 2u);
  EXPECT_EQ(outcomes[0].tool, "/bin/mv");
  EXPECT_EQ(outcomes[0].arguments, (std::vector<std::string>{"-f", "/tmp/new", "/tmp/moved"}));
  EXPECT_TRUE(outcomes[0].succeeded());
  EXPECT_EQ(outcomes[0].words, "");
  EXPECT_EQ(outcomes[1].tool, "/bin/chmod");
  EXPECT_TRUE(outcomes[1].succeeded());
}

TEST_P(ServicesContract, TellsOfAToolThatFailsByItself) {
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/missing", "/tmp/moved"}), errAuthorizationSuccess);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_FALSE(outcomes[0].succeeded());
  EXPECT_EQ(outcomes[0].end, End::exited);
  EXPECT_EQ(outcomes[0].status, 1);
  EXPECT_EQ(outcomes[0].words != "", computer->keepsWords());
}

TEST_P(ServicesContract, TellsTheStatusAndTheWordsOfAToolThatFailed) {
  computer->putFailingTool("/usr/sbin/nvkservice", 9, "no server here");
  EXPECT_EQ(start("/usr/sbin/nvkservice", {"apply"}), errAuthorizationSuccess);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_EQ(outcomes[0].end, End::exited);
  EXPECT_EQ(outcomes[0].status, 9);
  EXPECT_EQ(outcomes[0].words, computer->keepsWords() ? "no server here" : "");
}

TEST_P(ServicesContract, TellsTheSignalOfAToolThatWasKilled) {
  computer->putKilledTool("/usr/sbin/nvkservice", SIGTERM);
  EXPECT_EQ(start("/usr/sbin/nvkservice", {"apply"}), errAuthorizationSuccess);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_EQ(outcomes[0].end, End::killed);
  EXPECT_EQ(outcomes[0].status, SIGTERM);
  EXPECT_FALSE(outcomes[0].succeeded());
}

TEST_P(ServicesContract, RunsTheToolsAfterOneThatFailed) {
  computer->putFailingTool("/usr/sbin/chown", 1, "not permitted");
  computer->putFile("/tmp/file", "x");
  EXPECT_EQ(start("/usr/sbin/chown", {"root", "/tmp/file"}), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/chmod", {"600", "/tmp/file"}), errAuthorizationSuccess);
  EXPECT_EQ(ended().size(), 2u);
  EXPECT_EQ(computer->modeOf("/tmp/file"), 0600u);
}

TEST_P(ServicesContract, TellsOfToolsThatHaveNotEnded) {
  computer->putSlowTool("/usr/bin/defaults", 600ms);
  computer->putFile("/tmp/file", "x");
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/chmod", {"600", "/tmp/file"}), errAuthorizationSuccess);
  EXPECT_FALSE(services.tools.wait(50ms));
  const auto outcomes = services.tools.outcomes();
  ASSERT_EQ(outcomes.size(), 2u);
  EXPECT_EQ(outcomes[0].end, End::running);
  EXPECT_FALSE(outcomes[0].ended());
  EXPECT_EQ(outcomes[1].end, End::waiting);
  EXPECT_FALSE(outcomes[1].ended());
  EXPECT_TRUE(ended()[1].succeeded());
}

TEST_P(ServicesContract, TellsOfAToolWhoseOutputWasRead) {
  computer->putTool("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}, "12288\n");
  FileRef pipe = nullptr;
  EXPECT_EQ(start("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}, &pipe), errAuthorizationSuccess);
  ASSERT_NE(pipe, nullptr);
  EXPECT_EQ(readRest(interfaces.files, pipe), "12288\n");
  interfaces.files.fclose(pipe);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_TRUE(outcomes[0].succeeded());
}

TEST_P(ServicesContract, TellsNothingOfAToolThatWasRefused) {
  computer->refuseTool("/bin/mv");
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/new", "/tmp/moved"}), errAuthorizationToolExecuteFailure);
  EXPECT_TRUE(ended().empty());
}

TEST_P(ServicesContract, ForgetsOutcomesAndStillWaits) {
  computer->putSlowTool("/usr/bin/defaults", 200ms);
  computer->putFile("/tmp/file", "x");
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  services.tools.forget();
  EXPECT_TRUE(services.tools.outcomes().empty());
  EXPECT_FALSE(services.tools.wait(0ms));
  EXPECT_EQ(start("/bin/chmod", {"600", "/tmp/file"}), errAuthorizationSuccess);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_EQ(outcomes[0].tool, "/bin/chmod");
}

// ---- Settings files

TEST_P(ServicesContract, InspectsFiles) {
  const std::string bytes("a\0b\xff\n", 5);
  computer->putFile("/etc/norvik/svr.cfg", bytes);
  const FileContent content = services.files.inspect("/etc/norvik/svr.cfg");
  EXPECT_EQ(content.kind, FileKind::regular);
  EXPECT_EQ(content.bytes, bytes);
  EXPECT_EQ(content.reason, "");
  computer->putFile("/etc/launchd.conf", "");
  EXPECT_EQ(services.files.inspect("/etc/launchd.conf").kind, FileKind::regular);
}

TEST_P(ServicesContract, InspectsWhatIsMissing) {
  for (const char* path : {"/etc/norvik/svr.cfg", "/missing/file"}) {
    const FileContent content = services.files.inspect(path);
    EXPECT_EQ(content.kind, FileKind::missing) << path;
    EXPECT_EQ(content.reason, "");
  }
}

TEST_P(ServicesContract, InspectsADirectory) {
  computer->makeDirectory("/etc/launchd.conf");
  const FileContent content = services.files.inspect("/etc/launchd.conf");
  EXPECT_EQ(content.kind, FileKind::directory);
  EXPECT_EQ(content.reason, "Is a directory");
}

TEST_P(ServicesContract, InspectsWhatNobodyCanOpen) {
  computer->putUnreadable("/etc/launchd.conf");
  const FileContent content = services.files.inspect("/etc/launchd.conf");
  EXPECT_TRUE(content.kind == FileKind::notAllowed || content.kind == FileKind::unreadable);
  EXPECT_EQ(content.bytes, "");
  EXPECT_NE(content.reason, "");
}

TEST_P(ServicesContract, InspectsFilesUpToTheLimitOfTheReaders) {
  std::string bytes(kMaxPropertyListBytes, ' ');
  computer->putFile("/etc/launchd.conf", bytes);
  EXPECT_EQ(services.files.inspect("/etc/launchd.conf").bytes.size(), bytes.size());
  computer->putFile("/etc/launchd.conf", bytes + ' ');
  const FileContent content = services.files.inspect("/etc/launchd.conf");
  EXPECT_EQ(content.kind, FileKind::tooLarge);
  EXPECT_EQ(content.bytes, "");
  EXPECT_NE(content.reason, "");
}

TEST_P(ServicesContract, KeepsACopyForTheUserAlone) {
  const std::string bytes("old\0copy", 8);
  EXPECT_TRUE(services.files.keepCopy("/etc/norvik/svr.cfg", bytes));
  const auto copy = services.files.copyOf("/etc/norvik/svr.cfg");
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->bytes, bytes);
  EXPECT_EQ(computer->bytesOf(copy->place), bytes);
  EXPECT_EQ(computer->modeOf(copy->place), 0600u);
  const std::regex rfc3339("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z");
  EXPECT_TRUE(std::regex_match(copy->time, rfc3339)) << copy->time;
  EXPECT_EQ(computer->bytesOf("/etc/norvik/svr.cfg"), std::nullopt);  // itself untouched
}

TEST_P(ServicesContract, KeepsTheLastCopyOfEachFile) {
  EXPECT_TRUE(services.files.keepCopy("/etc/norvik/svr.cfg", "a longer old one"));
  EXPECT_TRUE(services.files.keepCopy("/etc/norvik/svr.cfg", "new"));
  EXPECT_TRUE(services.files.keepCopy("/Users/user/svr.cfg", "another"));
  EXPECT_EQ(services.files.copyOf("/etc/norvik/svr.cfg")->bytes, "new");
  EXPECT_EQ(services.files.copyOf("/Users/user/svr.cfg")->bytes, "another");
  EXPECT_FALSE(services.files.copyOf("/svr.cfg"));
}

TEST_P(ServicesContract, KeepsNoCopyOfAPathThatLeadsElsewhere) {
  EXPECT_FALSE(services.files.keepCopy("/etc/../../outside", "x"));
  EXPECT_FALSE(services.files.keepCopy("relative", "x"));
  EXPECT_FALSE(services.files.copyOf("/etc/../../outside"));
}

TEST_P(ServicesContract, SetsDamagedBytesAsideWithoutWritingOverOthers) {
  const std::string path = "/Users/user/Library/Preferences/com.veltrane.plist";
  computer->putFile(path, "damaged");
  EXPECT_EQ(services.files.setAside(path, "one"), path + ".damaged");
  EXPECT_EQ(services.files.setAside(path, "two"), path + ".damaged.2");
  computer->makeDirectory(path + ".damaged.3");
  EXPECT_EQ(services.files.setAside(path, "four"), path + ".damaged.4");
  EXPECT_EQ(computer->bytesOf(path + ".damaged"), "one");
  EXPECT_EQ(computer->bytesOf(path + ".damaged.2"), "two");
  EXPECT_EQ(computer->bytesOf(path + ".damaged.4"), "four");
  EXPECT_EQ(computer->modeOf(path + ".damaged"), 0600u);
  EXPECT_EQ(computer->bytesOf(path), "damaged");  // itself untouched
}

TEST_P(ServicesContract, SetsDamagedBytesAsideWithTheCopiesWhereItCannotWriteBeside) {
  const auto place = services.files.setAside("/missing/svr.cfg", "damaged");
  ASSERT_TRUE(place);
  EXPECT_FALSE(place->starts_with("/missing"));
  EXPECT_EQ(computer->bytesOf(*place), "damaged");
  EXPECT_EQ(computer->modeOf(*place), 0600u);
  EXPECT_NE(services.files.setAside("/missing/svr.cfg", "again"), place);
  EXPECT_EQ(computer->bytesOf(*place), "damaged");
  EXPECT_FALSE(services.files.copyOf("/missing/svr.cfg"));  // which is something else
}

TEST_P(ServicesContract, RemovesFiles) {
  computer->putFile("/tmp/norvik.prefs.tmp", "x");
  EXPECT_TRUE(services.files.remove("/tmp/norvik.prefs.tmp"));
  EXPECT_EQ(computer->bytesOf("/tmp/norvik.prefs.tmp"), std::nullopt);
  EXPECT_TRUE(services.files.remove("/tmp/norvik.prefs.tmp"));
  computer->makeDirectory("/tmp/folder");
  EXPECT_FALSE(services.files.remove("/tmp/folder"));
  EXPECT_TRUE(computer->isDirectory("/tmp/folder"));
}

// ---- Delivery of notifications

TEST_P(ServicesContract, TellsWhetherTheLastNotificationReachedTheBus) {
  EXPECT_TRUE(services.delivery.lastWasDelivered());
  computer->listen();
  interfaces.notifications.postNotificationName("changed", nullptr, 0);
  EXPECT_TRUE(services.delivery.lastWasDelivered());
  computer->loseBus();
  interfaces.notifications.postNotificationName("changed", nullptr, 0);
  EXPECT_FALSE(services.delivery.lastWasDelivered());
}

}  // namespace
}  // namespace norvik
