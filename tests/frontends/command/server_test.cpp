// norvikctl start, stop, restart, displays and access.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

class ServerTest : public testing::Test {
 protected:
  // Tests may run side by side, and with servers on the standard ports.
  void SetUp() override {
    port = freePort();
    ASSERT_EQ(
        box.run({"set", "nvk.port=" + std::to_string(port), "rdp.port=" + std::to_string(freePort())}).status,
        0);
  }
  int pid() const {
    return box.json({"status"})["pid"].is_null() ? -1 : box.json({"status"})["pid"].get<int>();
  }

  SandboxRun box;
  int port = 0;
};

TEST_F(ServerTest, StartShowsTheAddresses) {
  const Result result = box.run({"start"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out.find("Server state    Started, process "), 0U) << result.out;
  EXPECT_NE(result.out.find(":" + std::to_string(port) + "\n"), std::string::npos);
  EXPECT_TRUE(connects(port));
  EXPECT_NE(box.run({"status"}).out.find("Server state    Started, process "), std::string::npos);
}

// Three dots belong to the word; at least ten more count the seconds.
TEST_F(ServerTest, DotsShowAtATerminalThatTimePasses) {
  const Result started = box.runAtTerminal({"start"}, "");
  EXPECT_EQ(started.status, 0) << started.out;
  EXPECT_EQ(started.out.find("Starting............."), 0U) << started.out;
  EXPECT_NE(started.out.find(".\nServer state    Started, process "), std::string::npos) << started.out;
  const Result restarted = box.runAtTerminal({"restart"}, "");
  EXPECT_EQ(restarted.out.find("Stopping............."), 0U) << restarted.out;
  EXPECT_NE(restarted.out.find(".\nStarting............."), std::string::npos) << restarted.out;
  EXPECT_EQ(box.runAtTerminal({"stop", "--json"}, "").out[0], '{');
}

TEST_F(ServerTest, StartedStatusAsJson) {
  const auto status = box.json({"start"});
  EXPECT_EQ(status["running"], true);
  EXPECT_GT(status["pid"].get<int>(), 0);
  const auto address = status["addresses"]["nvk"]["address"].get<std::string>();
  EXPECT_TRUE(address.ends_with(":" + std::to_string(port))) << address;
}

TEST_F(ServerTest, StopEndsIt) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  const Result result = box.run({"stop"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.find("Server state    Stopped\n"), 0U) << result.out;
  EXPECT_FALSE(connects(port));
}

TEST_F(ServerTest, RestartMakesAnotherProcess) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  const int before = pid();
  const Result result = box.run({"restart"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out.find("Server state    Started, process "), 0U) << result.out;
  EXPECT_NE(pid(), before);
  EXPECT_NE(pid(), -1);
}

TEST_F(ServerTest, AServerInTheWantedStateIsLeftAlone) {
  const Result stopped = box.run({"stop"});
  EXPECT_EQ(stopped.status, 0);
  EXPECT_EQ(stopped.out.find("The server is not running.\nServer state    Stopped\n"), 0U);
  ASSERT_EQ(box.run({"start"}).status, 0);
  const int before = pid();
  const Result started = box.run({"start"});
  EXPECT_EQ(started.status, 0);
  EXPECT_EQ(started.out.find("The server is already running.\nServer state    Started"), 0U);
  EXPECT_EQ(pid(), before);
}

TEST_F(ServerTest, RestartStartsAStoppedServer) {
  const Result result = box.run({"restart"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(
      result.out.find("The server is not running, so it is only started.\nServer state    Started, process "),
      0U)
      << result.out;
  EXPECT_NE(pid(), -1);
}

TEST_F(ServerTest, RestartThatCannotStartAStoppedServer) {
  box.replaceProgram("/usr/sbin/nvkservice", "exit 1");
  const Result result = box.run({"restart"});
  EXPECT_EQ(result.status, 69);
  EXPECT_NE(result.err.find("The server did not start."), std::string::npos) << result.err;
}

TEST_F(ServerTest, AServerThatDoesNotComeUp) {
  box.replaceProgram("/usr/sbin/nvkservice", "exit 1");
  const Result result = box.runAtTerminal({"start"}, "");
  EXPECT_EQ(result.status, 69);
  EXPECT_EQ(countOf(result.out.substr(0, result.out.find('\n')), "."), 3 + 15 + 10);
  EXPECT_NE(result.out.find("The server did not start."), std::string::npos);
}

TEST_F(ServerTest, AServerThatDoesNotGoDown) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  std::filesystem::copy_file(box.folder() / "usr/sbin/nvkservice", box.beside("nvkservice"));
  box.replaceProgram("/usr/sbin/nvkservice", "exit 1");
  EXPECT_EQ(box.run({"stop"}).status, 69);
  const Result result = box.run({"restart"});
  EXPECT_EQ(result.status, 69);
  EXPECT_NE(result.err.find("The server did not stop, so it was not started again."), std::string::npos);
  EXPECT_EQ(box.runAtTerminal({"restart"}, "").out.find("Starting"), std::string::npos);
}

TEST_F(ServerTest, AServerThatIsNotInstalled) {
  std::filesystem::remove(box.folder() / "usr/sbin/nvkservice");
  for (const char* order : {"start", "restart", "displays", "access"}) {
    const Result result = box.run({order});
    EXPECT_EQ(result.status, 69) << order;
    EXPECT_NE(result.err.find("The Norvik server is not installed on this computer.\n"), std::string::npos)
        << order << ": " << result.err;
  }
  const Result status = box.run({"status"});
  EXPECT_EQ(status.status, 0);
  EXPECT_NE(status.err.find("The Norvik server is not installed on this computer.\n"), std::string::npos)
      << status.err;
}

TEST_F(ServerTest, WithoutAServerNobodyIsAskedForRights) {
  std::filesystem::remove(box.folder() / "usr/sbin/nvkservice");
  box.write("/.norvik/authorization", "refused\n");
  for (const char* order : {"start", "restart", "displays", "access"})
    EXPECT_EQ(box.run({order}).status, 69) << order;
}

TEST_F(ServerTest, AServiceToolThatCannotBeRun) {
  std::filesystem::permissions(box.folder() / "usr/sbin/nvkservice", std::filesystem::perms(0644));
  const Result result = box.run({"start"});
  EXPECT_EQ(result.status, 77);
  EXPECT_NE(result.err.find("Norvik[E]: Could not start the server."), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("The system refused to run the command /usr/sbin/nvkservice start -f -w."),
            std::string::npos);
  EXPECT_EQ(box.run({"displays"}).status, 77);
  EXPECT_NE(box.run({"access"}).err.find("Norvik[E]: Could not launch access-manager."), std::string::npos);
}

TEST_F(ServerTest, AToolThatFailsIsQuoted) {
  box.replaceProgram("/usr/sbin/nvkservice", "echo no licence >&2; exit 3");
  const Result started = box.run({"start"});
  EXPECT_EQ(started.status, 69);
  EXPECT_NE(started.err.find(
                "The server did not start. /usr/sbin/nvkservice start -f -w failed with exit status 3: "
                "no licence.\n"),
            std::string::npos)
      << started.err;
  const auto displays = box.json({"displays"});
  EXPECT_EQ(displays["error"]["status"], 69);
  EXPECT_EQ(displays["commands"][0]["outcome"], "failed");
  EXPECT_EQ(displays["commands"][0]["words"], "no licence");
}

TEST_F(ServerTest, TheManagementTools) {
  const Result displays = box.run({"displays"});
  EXPECT_EQ(displays.status, 0);
  EXPECT_EQ(displays.out, "Opened with /usr/sbin/nvkservice dspcmd manage\n");
  EXPECT_EQ(box.json({"access"})["commands"][0]["command"],
            nlohmann::json({"/usr/sbin/nvkservice", "admcmd", "manage"}));
  EXPECT_TRUE(box.log("service.log", "dspcmd manage"));
  EXPECT_TRUE(box.log("service.log", "admcmd manage"));
}

// ---- In force

TEST_F(ServerTest, AStartWithoutItsPortHasFailedAndNamesWhoHasIt) {
  const Listener other;
  ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(other.port())}).status, 0);
  const std::string reason =
      "The server runs, but Norvik clients cannot connect to port " + std::to_string(other.port()) +
      ", which is taken by norvik_command_tests, process " + std::to_string(::getpid()) + ".\n";
  for (const char* order : {"start", "start", "restart"}) {
    const Result result = box.run({order});
    EXPECT_EQ(result.status, 69) << order;
    EXPECT_NE(result.err.find(reason), std::string::npos) << order << ": " << result.err;
    EXPECT_EQ(result.out.find("Norvik clients can connect"), std::string::npos) << result.out;
    EXPECT_NE(pid(), -1);
  }
}

// The file is edited by hand while the server runs.
class TakeUpCommandTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    ASSERT_EQ(box.run({"start"}).status, 0);
    rdp = box.json({"get", "rdp.port"})["values"]["rdp.port"].get<int>();
    box.write(kServerFile, serverConfiguration(stored, rdp));
  }
  std::string differing() const {
    return "Norvik clients: stored " + std::to_string(stored) + ", in force " + std::to_string(port) +
           "; apply to take it up.";
  }

  int stored = freePort();
  int rdp = 0;
};

TEST_F(TakeUpCommandTest, StatusShowsWhatIsStoredAndWhatIsInForce) {
  const Result status = box.run({"status"});
  EXPECT_EQ(status.status, 0);
  EXPECT_NE(status.out.find("Norvik clients  " + differing() + "\n"), std::string::npos) << status.out;
  EXPECT_NE(status.out.find("\n\"norvikctl apply\" makes the server take up what is stored.\n"),
            std::string::npos);
  EXPECT_NE(status.out.find("RDP clients can connect"), std::string::npos);
  const auto json = box.json({"status"});
  EXPECT_TRUE(json["addresses"]["nvk"]["address"].is_null());
  EXPECT_EQ(json["addresses"]["nvk"]["text"], differing());
  EXPECT_EQ(json["inForce"]["nvk"], nlohmann::json({{"typed", {{"on", true}, {"port", stored}}},
                                                    {"stored", {{"on", true}, {"port", stored}}},
                                                    {"seen", "listens"},
                                                    {"ports", {port}},
                                                    {"differs", true},
                                                    {"takenBy", nullptr}}));
  EXPECT_EQ(json["inForce"]["rdp"]["differs"], false);
}

TEST_F(TakeUpCommandTest, SetToWhatIsStoredSaysThatItIsNotInForce) {
  const Result result = box.run({"set", "nvk.port=" + std::to_string(stored)});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.err.find(differing() + "\n"), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("\"norvikctl apply\" makes the server take up what is stored."),
            std::string::npos);
  ASSERT_EQ(box.run({"apply"}).status, 0);
  EXPECT_EQ(box.run({"set", "nvk.port=" + std::to_string(stored)}).err, "");
}

TEST_F(TakeUpCommandTest, ApplyBringsItIntoForce) {
  const Result result = box.run({"apply"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_NE(result.out.find(":" + std::to_string(stored) + "\n"), std::string::npos) << result.out;
  EXPECT_TRUE(connects(stored));
  EXPECT_FALSE(connects(port));
  const auto json = box.json({"apply"});
  EXPECT_EQ(json["ok"], true);
  EXPECT_EQ(json["commands"][0]["command"], nlohmann::json({"/usr/sbin/nvkservice", "apply"}));
  EXPECT_EQ(json["inForce"]["nvk"]["ports"], nlohmann::json({stored}));
}

TEST_F(TakeUpCommandTest, ApplyNamesWhoHasThePort) {
  const Listener other;
  box.write(kServerFile, serverConfiguration(other.port(), rdp));
  const Result result = box.run({"apply"});
  EXPECT_EQ(result.status, 69);
  EXPECT_NE(result.err.find("which is taken by norvik_command_tests"), std::string::npos) << result.err;
  EXPECT_NE(
      box.run({"status"})
          .out.find("Port " + std::to_string(other.port()) + " is taken by norvik_command_tests, process "),
      std::string::npos);
  EXPECT_EQ(box.json({"status"})["inForce"]["nvk"]["takenBy"]["pid"], ::getpid());
}

TEST_F(TakeUpCommandTest, ApplyThatFailsIsQuoted) {
  box.replaceProgram("/usr/sbin/nvkservice", "echo the daemon is deaf >&2; exit 4");
  const auto json = box.json({"apply"});
  EXPECT_EQ(json["error"]["status"], 69);
  EXPECT_NE(json["error"]["message"].get<std::string>().find("the daemon is deaf"), std::string::npos);
  EXPECT_TRUE(connects(port));
}

TEST_F(ServerTest, ApplyOfAStoppedServerHasNothingToDo) {
  const Result result = box.run({"apply"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out.find("The server is not running; it takes up what is stored when it starts.\n"), 0U)
      << result.out;
  EXPECT_EQ(box.json({"apply"})["commands"], nlohmann::json::array());
}

TEST_F(ServerTest, IsRunningAnswersByItsStatus) {
  const Result stopped = box.run({"is-running"});
  EXPECT_EQ(stopped.status, 3);
  EXPECT_EQ(stopped.out, "not running\n");
  EXPECT_EQ(stopped.err, "");
  EXPECT_EQ(box.json({"is-running"})["running"], false);
  EXPECT_EQ(box.run({"is-running", "--json"}).status, 3);
  ASSERT_EQ(box.run({"start"}).status, 0);
  const Result started = box.run({"is-running"});
  EXPECT_EQ(started.status, 0);
  EXPECT_EQ(started.out, "running\n");
  const auto json = box.json({"is-running"});
  EXPECT_EQ(json["running"], true);
  EXPECT_EQ(json["pid"], pid());
  EXPECT_EQ(json["ok"], true);
}

// ---- Who orders goes away

class InterruptedOrderTest : public ServerTest {
 protected:
  static constexpr const char* kPidFile = "/var/run/nvkserverd.pid";
  bool runs() const { return !box.read(kPidFile).empty(); }
  RunningProgram begin(const Words& words) const { return box.start(words, "order"); }
  std::string errors() const { return contentOf(box.beside("order.err")); }
};

TEST_F(InterruptedOrderTest, ARestartWhoseTerminalGoesStartsTheServerAgain) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  RunningProgram restart = begin({"restart"});
  ASSERT_TRUE(eventually([&] { return !runs(); }));
  restart.send(SIGHUP);
  EXPECT_EQ(restart.status(), 0) << errors();
  EXPECT_TRUE(runs());
}

TEST_F(InterruptedOrderTest, ARestartWhoseReaderGoesStartsTheServerAgain) {
  const std::string command = builtProgram("norvikctl") + " --root " + box.folder().string() + " restart";
  for (int i = 0; i < 2; ++i) {
    // The reader has gone before anything is written: to a server that is stopped, then to one that runs.
    norvik::runProgram({"/bin/sh", "-c", "{ sleep 0.1; " + command + " 2>&1; } | exec true"});
    EXPECT_TRUE(eventually([&] { return runs() && connects(port); }));
  }
  EXPECT_TRUE(box.log("service.log", "stop: the daemon has ended"));
}

TEST_F(InterruptedOrderTest, AnInterruptedRestartSaysThatTheServerIsStopped) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  RunningProgram restart = begin({"restart"});
  ASSERT_TRUE(eventually([&] { return !runs(); }));
  restart.send(SIGINT);
  EXPECT_EQ(restart.status(), 130);
  EXPECT_NE(errors().find("interrupted; the server is stopped, and is not started again."), std::string::npos)
      << errors();
  EXPECT_NE(errors().find("norvikctl start"), std::string::npos) << errors();
  EXPECT_FALSE(runs());
}

TEST_F(InterruptedOrderTest, AnInterruptedStartSaysThatItGoesOn) {
  RunningProgram start = begin({"start", "--json"});
  ASSERT_TRUE(eventually([&] { return box.log("serverd.log", "starts"); }));
  start.send(SIGTERM);
  EXPECT_EQ(start.status(), 130);
  EXPECT_NE(errors().find("interrupted; the server "), std::string::npos) << errors();
  EXPECT_TRUE(eventually([&] { return runs(); }));
  const auto result = nlohmann::json::parse(contentOf(box.beside("order")), nullptr, false);
  EXPECT_EQ(result["error"]["code"], "interrupted");
  EXPECT_EQ(result["error"]["status"], 130);
}

}  // namespace
}  // namespace norvik::command
