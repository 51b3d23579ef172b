// The services of the simulated computer beyond the contract: the faults that a test can set, and the clock.
#include <gtest/gtest.h>

#include <csignal>

#include "src/adapters/simulated/simulated_computer.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;
using End = ToolOutcome::End;

class SimulatedServices : public testing::Test {
 protected:
  int64_t milliseconds() const { return computer.clock.microseconds() / 1000; }
  void launch(const std::string& tool, const Tools::Arguments& arguments = {}) {
    computer.tools.launch(tool, arguments);
  }
  ToolOutcome outcome(std::size_t index = 0) {
    const auto outcomes = services.tools.outcomes();
    return index < outcomes.size() ? outcomes[index] : ToolOutcome{"none", {}, End::killed, -1, ""};
  }

  SimulatedComputer computer;
  ComputerServices services = computer.services();
};

TEST_F(SimulatedServices, LockMovesTheClockUntilSomebodyElseGivesItUp) {
  computer.locks.holdElsewhere(700ms);
  EXPECT_EQ(services.locks.lock(500ms), nullptr);
  EXPECT_EQ(milliseconds(), 500);
  const auto lock = services.locks.lock(10s);
  EXPECT_NE(lock, nullptr);
  EXPECT_EQ(milliseconds(), 700);
  EXPECT_TRUE(computer.locks.isHeld());
}

TEST_F(SimulatedServices, LockIsNeverHadWhileSomebodyElseNeverGivesItUp) {
  computer.locks.holdElsewhere(std::nullopt);
  EXPECT_EQ(services.locks.lock(3s), nullptr);
  EXPECT_EQ(milliseconds(), 3000);
  computer.locks.holdElsewhere(0ms);
  EXPECT_NE(services.locks.lock(0ms), nullptr);
}

TEST_F(SimulatedServices, ToolFailsAsSetAndChangesNothing) {
  computer.fileSystem.put("/tmp/new", "x");
  computer.tools.setFailure("/bin/mv", "-f", 3, "no space");
  launch("/bin/mv", {"-f", "/tmp/new", "/etc/norvik/svr.cfg"});
  EXPECT_EQ(outcome().end, End::exited);
  EXPECT_EQ(outcome().status, 3);
  EXPECT_EQ(outcome().words, "no space");
  EXPECT_EQ(computer.fileSystem.find("/etc/norvik/svr.cfg"), nullptr);
  computer.tools.setUsual("/bin/mv", "-f");
  launch("/bin/mv", {"-f", "/tmp/new", "/etc/norvik/svr.cfg"});
  EXPECT_TRUE(outcome(1).succeeded());
  EXPECT_NE(computer.fileSystem.find("/etc/norvik/svr.cfg"), nullptr);
}

TEST_F(SimulatedServices, ToolBehavesAsSetForItsFirstArgumentBeforeAsSetForAny) {
  computer.tools.setFailure("/usr/sbin/nvkservice", std::nullopt, 1, "any");
  computer.tools.setKilled("/usr/sbin/nvkservice", "apply", SIGKILL);
  launch("/usr/sbin/nvkservice", {"apply"});
  launch("/usr/sbin/nvkservice", {"stop", "-w"});
  EXPECT_EQ(outcome(0).end, End::killed);
  EXPECT_EQ(outcome(0).status, SIGKILL);
  EXPECT_EQ(outcome(1).words, "any");
}

TEST_F(SimulatedServices, SlowToolTakesEffectWhenItEndsAndDelaysTheNext) {
  computer.fileSystem.put("/tmp/new", "x");
  computer.tools.setDuration("/bin/mv", std::nullopt, 400ms);
  computer.tools.setDuration("/bin/chmod", std::nullopt, 100ms);
  launch("/bin/mv", {"-f", "/tmp/new", "/tmp/moved"});
  launch("/bin/chmod", {"600", "/tmp/moved"});
  EXPECT_EQ(outcome(0).end, End::running);
  EXPECT_EQ(outcome(1).end, End::waiting);
  EXPECT_FALSE(services.tools.wait(450ms));
  EXPECT_TRUE(outcome(0).succeeded());
  EXPECT_EQ(outcome(1).end, End::running);
  ASSERT_NE(computer.fileSystem.find("/tmp/moved"), nullptr);
  EXPECT_EQ(computer.fileSystem.find("/tmp/moved")->mode, 0644u);
  EXPECT_TRUE(services.tools.wait(10s));
  EXPECT_EQ(milliseconds(), 500);
  EXPECT_EQ(computer.fileSystem.find("/tmp/moved")->mode, 0600u);
}

TEST_F(SimulatedServices, ToolThatNeverEndsDelaysTheNextForEver) {
  computer.tools.setDuration("/bin/mv", std::nullopt, std::nullopt);
  launch("/bin/mv");
  launch("/usr/sbin/nvkservice", {"apply"});
  EXPECT_FALSE(services.tools.wait(60s));
  EXPECT_EQ(milliseconds(), 60'000);
  EXPECT_EQ(outcome(0).end, End::running);
  EXPECT_EQ(outcome(1).end, End::waiting);
}

TEST_F(SimulatedServices, ToolThatReportsWaitsForOthersOnlySoLong) {
  computer.tools.setDuration("/bin/mv", std::nullopt, std::nullopt);
  launch("/bin/mv");
  EXPECT_EQ(computer.tools.launchAndRead("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}), "12288\n");
  EXPECT_EQ(milliseconds(), 10'000);
  EXPECT_EQ(computer.tools.launchAndRead("/usr/sbin/sysctl", {"-n", "kern.maxfilesperproc"}), "10240\n");
  EXPECT_EQ(milliseconds(), 10'000);  // the same tool delays only once
}

TEST_F(SimulatedServices, FilesAreWhatTheirFaultsMakeOfThem) {
  computer.fileSystem.put("/etc/launchd.conf", "limit");
  computer.fileFaults.set(FileOperation::read, "/etc/launchd.conf", true);
  EXPECT_EQ(services.files.inspect("/etc/launchd.conf").kind, FileKind::unreadable);
  EXPECT_EQ(services.files.inspect("/etc/launchd.conf").reason, "Input/output error");
  computer.fileFaults.set(FileOperation::openRead, "/etc/launchd.conf", true);
  EXPECT_EQ(services.files.inspect("/etc/launchd.conf").kind, FileKind::notAllowed);
  EXPECT_EQ(services.files.inspect("/etc/launchd.conf").reason, "Permission denied");
}

TEST_F(SimulatedServices, CopyCannotBeKeptWhereItsPlaceHasAFault) {
  ASSERT_TRUE(services.files.keepCopy("/etc/norvik/svr.cfg", "old"));
  computer.fileFaults.set(FileOperation::write, computer.settingsFiles.placeOf("/etc/norvik/svr.cfg"), true);
  EXPECT_FALSE(services.files.keepCopy("/etc/norvik/svr.cfg", "new"));
  EXPECT_EQ(services.files.copyOf("/etc/norvik/svr.cfg")->bytes, "old");
}

TEST_F(SimulatedServices, CopyBearsTheTimeOfTheClock) {
  ASSERT_TRUE(services.files.keepCopy("/etc/norvik/svr.cfg", "one"));
  EXPECT_EQ(services.files.copyOf("/etc/norvik/svr.cfg")->time, "2010-07-05T05:20:00Z");
  computer.clock.sleep(61'000'000);
  ASSERT_TRUE(services.files.keepCopy("/etc/norvik/svr.cfg", "two"));
  EXPECT_EQ(services.files.copyOf("/etc/norvik/svr.cfg")->time, "2010-07-05T05:21:01Z");
}

TEST_F(SimulatedServices, FileOfAnotherIsNotRemoved) {
  computer.fileSystem.put("/etc/launchd.conf", "limit");
  EXPECT_FALSE(services.files.remove("/etc/launchd.conf"));
  EXPECT_NE(computer.fileSystem.find("/etc/launchd.conf"), nullptr);
}

TEST_F(SimulatedServices, NotificationIsLostWithoutABus) {
  EXPECT_TRUE(services.delivery.lastWasDelivered());
  computer.notifications.setDelivers(false);
  computer.notifications.postNotificationName("name", nullptr, 0);
  EXPECT_FALSE(services.delivery.lastWasDelivered());
  computer.notifications.setDelivers(true);
  computer.notifications.postNotificationName("name", nullptr, 0);
  EXPECT_TRUE(services.delivery.lastWasDelivered());
}

}  // namespace
}  // namespace norvik
