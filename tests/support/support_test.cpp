// The tests' own helpers, above all that they notice what a test leaves behind.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "tests/support/failing_calls.h"
#include "tests/support/files.h"
#include "tests/support/program.h"
#include "tests/support/tcp_port.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/waiting.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

ProgramResult shell(const std::string& commands, const ProgramOptions& options = {}) {
  return runProgram({"sh", "-c", commands}, options);
}

TEST(WaitingTest, CallsTheConditionUntilItHolds) {
  int calls = 0;
  EXPECT_TRUE(eventually([&] { return ++calls == 3; }));
  EXPECT_EQ(calls, 3);
}

TEST(WaitingTest, CallsTheConditionOnceWithoutTime) {
  int calls = 0;
  EXPECT_FALSE(eventually([&] { return ++calls == 3; }, 0ms));
  EXPECT_EQ(calls, 1);
}

TEST(TemporaryFolderTest, IsNamedAfterTheTestAndRemovedWithItsFiles) {
  fs::path path;
  {
    const TemporaryFolder folder;
    path = folder.path();
    writeFile(path / "a/b", "text");
    EXPECT_TRUE(path.filename().string().starts_with("norvik-TemporaryFolderTest."));
    EXPECT_EQ(contentOf(path / "a/b"), "text");
  }
  EXPECT_FALSE(fs::exists(path));
}

void leaveAFileOpen() {
  std::ofstream file;
  const TemporaryFolder folder;
  file.open(folder.path() / "open");
}

TEST(TemporaryFolderTest, FailsTheTestForAFileThatIsLeftOpen) {
  EXPECT_NONFATAL_FAILURE(leaveAFileOpen(), "left open");
}

void leaveAProgramRunning() {
  std::optional<RunningProgram> program;
  const TemporaryFolder folder(0ms);
  fs::copy_file("/bin/sleep", folder.path() / "sleep");
  program.emplace(Words{folder.path() / "sleep", "600"});
}

TEST(TemporaryFolderTest, FailsTheTestForAProgramThatStillRuns) {
  EXPECT_NONFATAL_FAILURE(leaveAProgramRunning(), "still running");
}

TEST(ProgramTest, ReturnsStatusOutputAndErrors) {
  const ProgramResult result = shell("echo out; echo err >&2; exit 3");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "out\n");
  EXPECT_EQ(result.errors, "err\n");
}

TEST(ProgramTest, KeepsTheOrderOfErrorsThatArePartOfTheOutput) {
  const Words words{"sh", "-c", "echo out; echo err >&2; echo more"};
  const ProgramResult result = runProgram(words, {}, ErrorOutput::withOutput);
  EXPECT_EQ(result.output, "out\nerr\nmore\n");
  EXPECT_EQ(result.errors, "");
}

TEST(ProgramTest, HasItsFolderItsEnvironmentAndNoInput) {
  const TemporaryFolder folder;
  const ProgramOptions options{.environment = {{"HOME", "/home of a test"}}, .folder = folder.path()};
  EXPECT_EQ(shell("pwd; echo $HOME; cat", options).output, folder.path().string() + "\n/home of a test\n");
}

TEST(ProgramTest, HasNoStatusWhereASignalEndsIt) {
  EXPECT_EQ(shell("kill -KILL $$").status, -1);
}

TEST(ProgramTest, FailsTheTestWhereItCannotBeStarted) {
  EXPECT_NONFATAL_FAILURE(runProgram({"/no/such/program"}), "cannot be started: No such file");
}

TEST(ProgramTest, IsEndedAfterTheLimit) {
  EXPECT_NONFATAL_FAILURE(shell("exec sleep 600", {.limit = 50ms}), "did not end");
}

TEST(ProgramTest, FailsTheTestWhereSomebodyKeepsItsOutputOpen) {
  EXPECT_NONFATAL_FAILURE(shell("sleep 1 &", {.limit = 50ms}), "still has its output open");
}

TEST(ProgramTest, HasATerminalThatAPersonTypesAt) {
  const Words words{"sh", "-c", "test -t 0 && read word && echo got $word"};
  const ProgramResult result = runAtTerminal(words, "yes\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.output.find("got yes\n"), std::string::npos) << result.output;
}

TEST(RunningProgramTest, RunsUntilASignalEndsIt) {
  RunningProgram program({"sleep", "600"});
  EXPECT_FALSE(program.ending(0ms));
  program.send(SIGTERM);
  const auto ending = program.ending();
  ASSERT_TRUE(ending);
  EXPECT_EQ(ending->signal, SIGTERM);
  EXPECT_EQ(program.status(), -1);
}

TEST(RunningProgramTest, WritesItsOutputToFiles) {
  const TemporaryFolder folder;
  RunningProgram program({"sh", "-c", "echo out; echo err >&2; exit 4"}, {}, folder.path() / "output");
  EXPECT_EQ(program.status(), 4);
  EXPECT_EQ(contentOf(folder.path() / "output"), "out\n");
  EXPECT_EQ(contentOf(folder.path() / "output.err"), "err\n");
}

TEST(RunningProgramTest, IsEndedWithTheObject) {
  pid_t pid = -1;
  {
    const RunningProgram program({"sleep", "600"});
    pid = program.pid();
    EXPECT_EQ(::kill(pid, 0), 0);
  }
  EXPECT_EQ(::kill(pid, 0), -1);
}

TEST(TcpPortTest, TakesConnectionsWhileTheListenerLives) {
  int port = 0;
  {
    const TcpListener listener;
    port = listener.port();
    EXPECT_TRUE(connects(port));
  }
  EXPECT_FALSE(connects(port));
  EXPECT_EQ(greetingOn(port), "");
}

TEST(FailingCallsTest, FailAtTheChosenOperationOnTheChosenFile) {
  const TemporaryFolder folder;
  const std::string twice = "echo one >> a; echo one >> b; echo two >> a; echo two >> b; echo three >> b";
  Fault fault{
      .calls = "write", .effect = "ENOSPC", .number = "2", .path = "*/b", .log = folder.path() / "log"};
  EXPECT_NE(shell(twice, {environmentOf(fault), folder.path()}).errors, "");
  EXPECT_EQ(contentOf(folder.path() / "a"), "one\ntwo\n");
  EXPECT_EQ(contentOf(folder.path() / "b"), "one\nthree\n");
  const std::string line = "write " + (folder.path() / "b").native() + "\n";
  EXPECT_EQ(contentOf(folder.path() / "log"), line + line + line);
  fault.number = "2+";
  shell("rm b;" + twice, {environmentOf(fault), folder.path()});
  EXPECT_EQ(contentOf(folder.path() / "b"), "one\n");
}

TEST(FailingCallsTest, ReachTheProgramsThatAProgramStarts) {
  const TemporaryFolder folder;
  writeFile(folder.path() / "a", "text");
  Fault fault{.calls = "rename", .effect = "EIO", .program = "mv"};
  EXPECT_NE(shell("mv a b", {environmentOf(fault), folder.path()}).status, 0);
  EXPECT_FALSE(fs::exists(folder.path() / "b"));
  fault.program = "cp";
  EXPECT_EQ(shell("mv a b", {environmentOf(fault), folder.path()}).status, 0);
  EXPECT_EQ(contentOf(folder.path() / "b"), "text");
}

TEST(FailingCallsTest, EndAProgramBeforeTheOperation) {
  const TemporaryFolder folder;
  const Fault fault{.calls = "write", .effect = "SHORT,KILL", .number = "1", .path = "*/b"};
  EXPECT_EQ(shell("echo 123 > b; echo 4 > b; echo 5 > c", {environmentOf(fault), folder.path()}).status, -1);
  EXPECT_EQ(contentOf(folder.path() / "b"), "12");  // the shell goes on after a short write
  EXPECT_FALSE(fs::exists(folder.path() / "c"));
}

TEST(FailingCallsTest, RefuseAnEffectThatIsNone) {
  const TemporaryFolder folder;
  const Fault fault{.calls = "write", .effect = "ENOTHING", .path = "*/b"};
  EXPECT_EQ(shell("echo 1 > b", {environmentOf(fault), folder.path()}).status, 125);
}

}  // namespace
}  // namespace norvik
