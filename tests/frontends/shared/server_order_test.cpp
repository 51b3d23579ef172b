// Orders to the server and what is said of them, over the simulated computer.
#include "src/frontends/shared/server/server_order.h"

#include <gtest/gtest.h>

#include "src/adapters/simulated/simulated_computer.h"
#include "src/server/mac/control/tool_commands.h"
#include "tests/support/sandbox.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

using std::chrono::milliseconds;

constexpr int32_t kRunningPid = 700;
constexpr int32_t kStarted = 4321;

class ServerOrderTest : public testing::Test {
 protected:
  ServerOrderTest() {
    pane.awakeFromNib();
    pane.authorize(true, false);
    pane.onStateTimer();
  }
  ~ServerOrderTest() override { pane.destroy(); }

  void store(int nvk, int rdp) {
    computer.fileSystem.put(kServerConfigFile, serverConfiguration(nvk, rdp));
    pane.discardServerAndUserChanges();
  }
  void runServer() {
    computer.service.setDaemon(kRunningPid);
    pane.onStateTimer();
  }
  OrderReport order(ServerOrder order) { return carryOut(order, server); }

  InterfaceDescription interface = shippedInterface();
  SimulatedComputer computer;
  RecordingPlatform recording{computer.platform(), computer.alerts, computer.drawing, RecordingMode::real};
  NVKServerPrefs pane{interface};
  OrderedServer server{
      pane,
      recording,
      interface,
      computer.services(),
      [this](milliseconds limit) { return computer.tools.wait(limit); },
      [this](milliseconds time) { computer.clock.sleep(static_cast<uint32_t>(time.count()) * 1000); }};
};

TEST_F(ServerOrderTest, AStartThatSucceeds) {
  const OrderReport report = order(ServerOrder::start);
  EXPECT_TRUE(report.ok()) << report.change.error.sentence;
  EXPECT_EQ(report.note, "");
  EXPECT_EQ(report.before, -1);
  EXPECT_EQ(report.after, kStarted);
  ASSERT_EQ(report.change.commands.size(), 1U);
  EXPECT_EQ(report.change.commands[0].launch.arguments, (std::vector<std::string>{"start", "-f", "-w"}));
  EXPECT_TRUE(report.change.commands[0].outcome.succeeded());
  EXPECT_FALSE(report.inForce.differs());
  EXPECT_EQ(report.inForce.services[0].inForce, InForce::listens);
}

TEST_F(ServerOrderTest, AStopAndARestart) {
  runServer();
  const OrderReport restarted = order(ServerOrder::restart);
  EXPECT_TRUE(restarted.ok()) << restarted.change.error.sentence;
  EXPECT_EQ(restarted.before, kRunningPid);
  EXPECT_EQ(restarted.after, kStarted);
  EXPECT_EQ(restarted.change.commands.size(), 2U);
  const OrderReport stopped = order(ServerOrder::stop);
  EXPECT_TRUE(stopped.ok());
  EXPECT_EQ(stopped.after, -1);
}

TEST_F(ServerOrderTest, WhatIsSoAlreadyNeedsNoToolAndNoRights) {
  pane.deauthorize();
  const OrderReport stopped = order(ServerOrder::stop);
  EXPECT_TRUE(stopped.ok());
  EXPECT_EQ(stopped.note, "The server is not running.");
  runServer();
  const OrderReport started = order(ServerOrder::start);
  EXPECT_TRUE(started.ok());
  EXPECT_EQ(started.note, "The server is already running.");
  EXPECT_TRUE(started.change.commands.empty());
  EXPECT_EQ(started.after, kRunningPid);
}

// The pane's button would stop a server that has come up since the pane looked last.
TEST_F(ServerOrderTest, AServerThatHasJustComeUpIsNotStoppedByAStart) {
  computer.service.setDaemon(kRunningPid);
  EXPECT_EQ(order(ServerOrder::start).after, kRunningPid);
  EXPECT_TRUE(computer.service.daemonRuns());
}

TEST_F(ServerOrderTest, ARestartOfAStoppedServerStartsIt) {
  const OrderReport report = order(ServerOrder::restart);
  EXPECT_TRUE(report.ok()) << report.change.error.sentence;
  EXPECT_EQ(report.note, "The server is not running, so it is only started.");
  EXPECT_EQ(report.after, kStarted);
}

TEST_F(ServerOrderTest, WithoutRightsNothingIsRun) {
  pane.deauthorize();
  const OrderReport report = order(ServerOrder::start);
  EXPECT_EQ(report.change.error.code, FailureCode::notAllowed);
  EXPECT_EQ(report.change.error.sentence, "This needs administrator rights, which were not granted.");
  EXPECT_FALSE(computer.service.daemonRuns());
}

TEST_F(ServerOrderTest, AServerThatIsNotInstalled) {
  computer.fileSystem.remove(PROC_NVKSVC);
  const OrderReport report = order(ServerOrder::start);
  EXPECT_EQ(report.change.error.code, FailureCode::server);
  EXPECT_EQ(report.change.error.sentence, "The Norvik server is not installed on this computer.");
  EXPECT_EQ(report.change.error.advice, "Install the server; its program /usr/sbin/nvkservice is missing.");
  EXPECT_TRUE(report.change.commands.empty());
}

TEST_F(ServerOrderTest, WithoutAServerNobodyIsAskedForRights) {
  computer.fileSystem.remove(PROC_NVKSVC);
  pane.deauthorize();
  EXPECT_EQ(order(ServerOrder::start).change.error.sentence,
            "The Norvik server is not installed on this computer.");
}

TEST_F(ServerOrderTest, AToolThatFailsIsQuoted) {
  computer.tools.setFailure(PROC_NVKSVC, "start", 3, "nvkservice: no licence");
  const OrderReport report = order(ServerOrder::start);
  EXPECT_EQ(report.change.error.code, FailureCode::server);
  EXPECT_EQ(
      report.change.error.sentence,
      "The server did not start. /usr/sbin/nvkservice start -f -w failed with exit status 3: nvkservice: no "
      "licence.");
}

TEST_F(ServerOrderTest, AToolThatFailsAlthoughTheServerDoesAsOrderedIsAWarning) {
  runServer();
  computer.tools.setFailure(PROC_NVKSVC, "stop", 1, "half stopped");
  computer.clock.addSleepListener([this](uint32_t) { computer.service.setDaemon(std::nullopt); });
  const OrderReport report = order(ServerOrder::stop);
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(
      report.change.warnings,
      std::vector<std::string>{"/usr/sbin/nvkservice stop -w failed with exit status 1: half stopped."});
}

TEST_F(ServerOrderTest, AToolThatTheSystemRefuses) {
  computer.authorization.refuse(PROC_NVKSVC, "start");
  const OrderReport report = order(ServerOrder::start);
  EXPECT_EQ(report.change.error.code, FailureCode::notAllowed);
  EXPECT_EQ(report.change.error.sentence,
            "The system refused to run the command /usr/sbin/nvkservice start -f -w.");
}

TEST_F(ServerOrderTest, AToolThatDoesNotEnd) {
  computer.tools.setDuration(PROC_NVKSVC, "start", std::nullopt);
  const OrderReport report = order(ServerOrder::start);
  EXPECT_EQ(report.change.error.code, FailureCode::tryAgain);
}

TEST_F(ServerOrderTest, AServerThatDoesNotComeUpOrGoDown) {
  computer.service.setStartDelay(std::nullopt);
  const OrderReport started = order(ServerOrder::start);
  EXPECT_EQ(started.change.error.code, FailureCode::server);
  EXPECT_EQ(started.change.error.sentence, "The server did not start. It was given 25 seconds.");
  EXPECT_NE(started.change.error.advice, "");
  runServer();
  computer.service.setStopDelay(std::nullopt);
  EXPECT_EQ(order(ServerOrder::stop).change.error.sentence,
            "The server did not stop. It was given 25 seconds.");
  EXPECT_EQ(order(ServerOrder::restart).change.error.sentence,
            "The server did not stop, so it was not started again. It was given 25 seconds.");
}

TEST_F(ServerOrderTest, APortThatSomebodyElseHas) {
  store(4500, 3389);
  computer.ports.hold(4500, 812, "nginx");
  for (const ServerOrder which : {ServerOrder::start, ServerOrder::start, ServerOrder::restart}) {
    const OrderReport report = order(which);
    EXPECT_EQ(report.change.error.code, FailureCode::server);
    EXPECT_EQ(
        report.change.error.sentence,
        "The server runs, but Norvik clients cannot connect to port 4500, which is taken by nginx, process 812.");
    EXPECT_EQ(report.change.error.setting, "nvk.port");
    EXPECT_EQ(report.change.error.outlet, "ib_admin_edbox_nvkPort");
    EXPECT_NE(report.change.error.advice, "");
    EXPECT_TRUE(computer.service.daemonRuns());
  }
}

TEST_F(ServerOrderTest, AServerThatDoesNotListenAlthoughItWasJustStarted) {
  store(4500, 3389);
  computer.clock.addSleepListener([this](uint32_t) {
    if (computer.service.daemonRuns()) computer.ports.setServerPorts({3389});
  });
  EXPECT_EQ(
      order(ServerOrder::start).change.error.sentence,
      "The server runs, but Norvik clients cannot connect to port 4500, where the server does not listen.");
}

TEST_F(ServerOrderTest, WhatWasStoredSinceAServerStartedIsOnlyAWarning) {
  store(4500, 3389);
  runServer();
  computer.ports.setServerPorts({4073, 3389});
  const OrderReport report = order(ServerOrder::start);
  EXPECT_TRUE(report.ok()) << report.change.error.sentence;
  EXPECT_EQ(report.change.warnings,
            std::vector<std::string>{"Norvik clients: stored 4500, in force 4073; apply to take it up."});
}

TEST_F(ServerOrderTest, WhatAButtonOrders) {
  EXPECT_EQ(orderOf(pane, pane.ib_admin_button_svrStart), ServerOrder::start);
  runServer();
  EXPECT_EQ(orderOf(pane, pane.ib_admin_button_svrStart), ServerOrder::stop);
  EXPECT_EQ(orderOf(pane, pane.ib_admin_button_svrRestart), ServerOrder::restart);
  EXPECT_EQ(orderOf(pane, pane.ib_button_Apply), std::nullopt);
}

TEST_F(ServerOrderTest, OnlyWhatEndsConnectionsIsAskedAbout) {
  EXPECT_FALSE(questionBefore(ServerOrder::start));
  for (const ServerOrder which : {ServerOrder::stop, ServerOrder::restart}) {
    const auto question = questionBefore(which);
    ASSERT_TRUE(question);
    EXPECT_NE(question->message.find("disconnected"), std::string::npos);
    EXPECT_EQ(question->buttons.back(), "Cancel");
    EXPECT_EQ(question->buttons.size(), 2U);
  }
}

class TakeUpTest : public ServerOrderTest {
 protected:
  OrderReport takeUpNow() {
    NoChangeRecords records;
    SettingsChange change(pane, recording, computer.platform(), interface, computer.services(),
                          {records, [](int64_t) { return false; }, server.waitForTools});
    return takeUp(change, server);
  }
};

TEST_F(TakeUpTest, TheServerListensAsStoredAfterwards) {
  store(4500, 3389);
  runServer();
  computer.ports.setServerPorts({4073, 3389});
  const OrderReport report = takeUpNow();
  EXPECT_TRUE(report.ok()) << report.change.error.sentence;
  EXPECT_EQ(report.inForce.services[0].ports, std::vector<uint16_t>{4500});
  ASSERT_EQ(report.change.commands.size(), 1U);
  EXPECT_EQ(report.change.commands[0].launch.arguments, std::vector<std::string>{"apply"});
  EXPECT_TRUE(computer.service.daemonRuns());
}

TEST_F(TakeUpTest, AStoppedServerIsLeftAlone) {
  const OrderReport report = takeUpNow();
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(report.note, "The server is not running; it takes up what is stored when it starts.");
  EXPECT_TRUE(report.change.commands.empty());
}

TEST_F(TakeUpTest, AToolThatFailsOrIsNotThere) {
  runServer();
  computer.tools.setFailure(PROC_NVKSVC, "apply", 5, "cannot be signalled");
  const OrderReport failed = takeUpNow();
  EXPECT_EQ(failed.change.error.code, FailureCode::server);
  EXPECT_NE(failed.change.error.sentence.find("cannot be signalled"), std::string::npos);
  computer.fileSystem.remove(PROC_NVKSVC);
  EXPECT_EQ(takeUpNow().change.error.sentence, "The Norvik server is not installed on this computer.");
}

TEST_F(TakeUpTest, SomebodyElseWhoChangesSettingsIsWaitedFor) {
  runServer();
  computer.locks.holdElsewhere(std::nullopt);
  EXPECT_EQ(takeUpNow().change.error.code, FailureCode::tryAgain);
}

// The tool only tells the server.
TEST_F(TakeUpTest, AServerThatNeedsAMomentIsWaitedForAndOneThatNeverDoesIsReported) {
  store(4500, 3389);
  runServer();
  int pauses = 0;
  server.pause = [&](milliseconds) {
    computer.ports.setServerPorts(++pauses < 3 ? std::set<uint16_t>{4073, 3389}
                                               : std::set<uint16_t>{4500, 3389});
  };
  computer.ports.hold(4500, 812, "nginx");
  OrderReport report = takeUpNow();
  EXPECT_TRUE(report.ok()) << report.change.error.sentence;
  EXPECT_EQ(pauses, 3);
  server.pause = [&](milliseconds) { ++pauses; };
  computer.ports.setServerPorts({});
  report = takeUpNow();
  EXPECT_EQ(report.change.error.code, FailureCode::server);
  EXPECT_NE(report.change.error.sentence.find("which is taken by nginx, process 812."), std::string::npos);
  EXPECT_EQ(pauses, 3 + 100);
}

}  // namespace
}  // namespace norvik
