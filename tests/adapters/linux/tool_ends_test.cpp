// What the Linux adapter knows of the ends of its tools beyond the contract: real processes that say much,
// that leave others behind, that hang, or whose program ends first.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/adapters/contract/computer_under_test.h"
#include "tests/adapters/linux/administered_computer.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;
using End = ToolOutcome::End;

class LinuxToolEnds : public testing::Test {
 protected:
  void TearDown() override { EXPECT_TRUE(services.tools.wait(kPatience)); }

  void putTool(const std::string& commands) { folder.putScript("/bin/tool", commands); }
  // The outcome of a tool that does this, when it has ended.
  ToolOutcome outcomeOf(const std::string& commands) {
    putTool(commands);
    own.start("/bin/tool");
    EXPECT_TRUE(services.tools.wait(kPatience));
    return services.tools.outcomes().back();
  }
  bool appears(const char* path) {
    return eventually([this, path] { return folder.read(path).has_value(); });
  }
  pid_t numberIn(const char* path) {
    EXPECT_TRUE(eventually([&] { return folder.read(path).value_or("").ends_with('\n'); }));
    return std::stoi(folder.read(path).value_or("0"));
  }

  SandboxFolder folder;
  AdministeredComputer own{folder.path()};
  ComputerServices services = own.computer.services();
};

TEST_F(LinuxToolEnds, KeepTheBeginningOfWhatAToolSays) {
  const ToolOutcome outcome =
      outcomeOf("printf first >&2; head -c 1000000 /dev/zero | tr '\\0' x >&2; exit 3");
  EXPECT_EQ(outcome.end, End::exited);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.words, "first" + std::string(kLongestToolWords - 5, 'x'));
}

TEST_F(LinuxToolEnds, KeepWordsInAnyEncodingWithoutWhiteSpaceAroundThem) {
  EXPECT_EQ(outcomeOf("printf '\\n  \\377\\000 \\376\\t\\n' >&2").words, std::string("\xff\0 \xfe", 4));
}

TEST_F(LinuxToolEnds, KeepWhatIsSaidByTheNameOfTheStream) {
  EXPECT_EQ(outcomeOf("echo one > /dev/stderr; echo two > /dev/stderr").words, "one\ntwo");
}

TEST_F(LinuxToolEnds, SayWhyAToolCannotBeRun) {
  folder.putScript("/bin/tool", "");
  folder.put("/bin/tool", "#!/no/such/interpreter\n");
  own.start("/bin/tool");
  EXPECT_TRUE(services.tools.wait(kPatience));
  const ToolOutcome outcome = services.tools.outcomes().back();
  EXPECT_EQ(outcome.end, End::exited);
  EXPECT_EQ(outcome.status, 127);
  EXPECT_EQ(outcome.words, "/bin/tool: No such file or directory");
}

TEST_F(LinuxToolEnds, AreKnownToAProgramThatIgnoresTheEndsOfItsChildren) {
  const auto before = ::signal(SIGCHLD, SIG_IGN);
  const ToolOutcome outcome = outcomeOf("echo words >&2; exit 5");
  ::signal(SIGCHLD, before);
  EXPECT_EQ(outcome.end, End::exited);
  EXPECT_EQ(outcome.status, 5);
  EXPECT_EQ(outcome.words, "words");
}

TEST_F(LinuxToolEnds, DoNotWaitForADaemonThatIsLeftBehind) {
  const ToolOutcome outcome = outcomeOf(
      "(until [ -e $NORVIK_ROOT/tmp/end ]; do sleep 0.01; done; echo > $NORVIK_ROOT/tmp/ended) &\n"
      "echo words >&2");
  EXPECT_TRUE(outcome.succeeded());
  EXPECT_EQ(outcome.words, "words");
  EXPECT_EQ(folder.read("/tmp/ended"), std::nullopt);
  folder.put("/tmp/end", "");
  EXPECT_TRUE(appears("/tmp/ended"));
}

// Nobody reads any more what it says; that must neither end nor stop it.
TEST_F(LinuxToolEnds, DoNotHarmADaemonThatIsLeftBehind) {
  outcomeOf(
      "(until [ -e $NORVIK_ROOT/tmp/go ]; do sleep 0.01; done; echo word >&2;\n"
      " head -c 1000000 /dev/zero >&2; echo > $NORVIK_ROOT/tmp/ended) &");
  folder.put("/tmp/go", "");
  EXPECT_TRUE(appears("/tmp/ended"));
}

TEST_F(LinuxToolEnds, DoNotWaitForADaemonThatNeverStopsTalking) {
  const ToolOutcome outcome = outcomeOf(
      "(until [ -e $NORVIK_ROOT/tmp/end ]; do echo word >&2; done; echo > $NORVIK_ROOT/tmp/ended) &\n"
      "sleep 0.1");
  EXPECT_TRUE(outcome.succeeded());
  folder.put("/tmp/end", "");
  EXPECT_TRUE(appears("/tmp/ended"));
}

TEST_F(LinuxToolEnds, ComeAsEverAfterTheProgramWasKilled) {
  putTool("sleep 0.3; echo words >&2; echo >> $NORVIK_ROOT/tmp/ended");
  const pid_t program = ::fork();
  if (program == 0) {
    own.start("/bin/tool");
    ::kill(::getpid(), SIGKILL);
  }
  ASSERT_EQ(::waitpid(program, nullptr, 0), program);
  EXPECT_TRUE(appears("/tmp/ended"));
}

TEST_F(LinuxToolEnds, AreLostWithTheProcessThatLooksAfterATool) {
  putTool("echo $PPID > $NORVIK_ROOT/tmp/parent; echo $$ > $NORVIK_ROOT/tmp/tool; exec sleep 600");
  own.start("/bin/tool");
  const pid_t tool = numberIn("/tmp/tool");
  ::kill(numberIn("/tmp/parent"), SIGKILL);
  EXPECT_TRUE(services.tools.wait(kPatience));
  ::kill(tool, SIGKILL);
  EXPECT_EQ(services.tools.outcomes().back().end, End::killed);
  EXPECT_EQ(services.tools.outcomes().back().status, SIGKILL);
}

// A clock that runs twenty times as fast makes half a second of the ten that a tool that reports waits.
TEST_F(LinuxToolEnds, DelayThoseWhoReportOnlySoLongAndOnlyOnce) {
  AdministeredComputer fast(folder.path(), 20);
  folder.putScript("/bin/endless", "echo $$ > $NORVIK_ROOT/tmp/endless; exec sleep 600");
  folder.putScript("/bin/report", "echo text");
  folder.putScript("/bin/next", "echo > $NORVIK_ROOT/tmp/next");
  fast.start("/bin/endless");
  fast.start("/bin/next");
  const auto before = std::chrono::steady_clock::now();
  for (int i = 0; i < 10; ++i) {
    FileRef pipe = nullptr;
    fast.start("/bin/report", {}, &pipe);
    EXPECT_EQ(readRest(fast.computer.files, pipe), "text\n");
    fast.computer.files.fclose(pipe);
  }
  EXPECT_GE(std::chrono::steady_clock::now() - before, 400ms);
  EXPECT_LT(std::chrono::steady_clock::now() - before, 4s);
  EXPECT_EQ(folder.read("/tmp/next"), std::nullopt);
  EXPECT_EQ(fast.computer.services().tools.outcomes()[1].end, End::waiting);
  ::kill(numberIn("/tmp/endless"), SIGKILL);
  EXPECT_TRUE(fast.computer.services().tools.wait(kPatience));
  EXPECT_NE(folder.read("/tmp/next"), std::nullopt);
}

TEST_F(LinuxToolEnds, ReleaseTheLockThatTheToolsShareWhateverTheyLeaveBehind) {
  putTool(
      "(until [ -e $NORVIK_ROOT/tmp/end ]; do sleep 0.01; done; echo > $NORVIK_ROOT/tmp/ended) &\n"
      "readlink /proc/$$/fd/* > $NORVIK_ROOT/tmp/open");
  auto lock = services.locks.lock(0ms);
  ASSERT_NE(lock, nullptr);
  own.start("/bin/tool");
  EXPECT_TRUE(services.tools.wait(kPatience));
  EXPECT_EQ(folder.read("/tmp/open").value_or("").find("/etc/norvik"), std::string::npos);
  lock.reset();
  EXPECT_NE(services.locks.lock(0ms), nullptr);  // the daemon still runs
  folder.put("/tmp/end", "");
  EXPECT_TRUE(appears("/tmp/ended"));
}

// Most of its tools have not even begun by then.
TEST_F(LinuxToolEnds, LetNobodyOvertakeTheToolsOfAProgramThatWasKilled) {
  putTool("until [ -e $NORVIK_ROOT/tmp/go ]; do sleep 0.01; done");
  folder.putScript("/bin/slow", "sleep 0.3; echo slow >&2; echo slow >> $NORVIK_ROOT/tmp/order");
  folder.putScript("/bin/next", "echo next >> $NORVIK_ROOT/tmp/order");
  const pid_t program = ::fork();
  if (program == 0) {
    AdministeredComputer other(folder.path());
    const auto lock = other.computer.services().locks.lock(0ms);
    for (const char* tool : {"/bin/tool", "/bin/slow", "/bin/next"}) other.start(tool);
    ::kill(::getpid(), SIGKILL);
  }
  ASSERT_EQ(::waitpid(program, nullptr, 0), program);
  EXPECT_EQ(services.locks.lock(200ms), nullptr);
  folder.put("/tmp/go", "");
  EXPECT_NE(services.locks.lock(kPatience), nullptr);
  EXPECT_EQ(folder.read("/tmp/order"), "slow\nnext\n");
}

}  // namespace
}  // namespace norvik
