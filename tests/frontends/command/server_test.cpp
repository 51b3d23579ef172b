// norvikctl start, stop, restart, displays and access.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

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
  EXPECT_NE(result.err.find("the server did not start."), std::string::npos) << result.err;
}

TEST_F(ServerTest, AServerThatDoesNotComeUp) {
  box.replaceProgram("/usr/sbin/nvkservice", "exit 1");
  const Result result = box.runAtTerminal({"start"}, "");
  EXPECT_EQ(result.status, 69);
  EXPECT_EQ(countOf(result.out.substr(0, result.out.find('\n')), "."), 3 + 15 + 10);
  EXPECT_NE(result.out.find("the server did not start."), std::string::npos);
}

TEST_F(ServerTest, AServerThatDoesNotGoDown) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  std::filesystem::copy_file(box.folder() / "usr/sbin/nvkservice", box.beside("nvkservice"));
  box.replaceProgram("/usr/sbin/nvkservice", "exit 1");
  EXPECT_EQ(box.run({"stop"}).status, 69);
  const Result result = box.run({"restart"});
  EXPECT_EQ(result.status, 69);
  EXPECT_NE(result.err.find("the server did not stop, so it was not started again."), std::string::npos);
  EXPECT_EQ(box.runAtTerminal({"restart"}, "").out.find("Starting"), std::string::npos);
}

TEST_F(ServerTest, AServiceToolThatCannotBeRun) {
  std::filesystem::remove(box.folder() / "usr/sbin/nvkservice");
  const Result result = box.run({"start"});
  EXPECT_EQ(result.status, 69);
  EXPECT_NE(result.err.find("Norvik[E]: Could not start the server."), std::string::npos);
  EXPECT_EQ(box.run({"displays"}).status, 77);
  EXPECT_NE(box.run({"access"}).err.find("Norvik[E]: Could not launch access-manager."), std::string::npos);
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

}  // namespace
}  // namespace norvik::command
