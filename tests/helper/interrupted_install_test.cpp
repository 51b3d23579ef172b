// An install that is killed at each of its system calls in turn: the target is always the old file or the new
// one, as a whole. A tracer stops the process before each call.
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>

#include <csignal>

#include "tests/helper/computer.h"

namespace norvik::helper {
namespace {

// Kills the process that carries out the line at its stop of that number; each system call has two stops,
// before and after.
bool killedAtStop(const FolderComputer& computer, int number) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    ::raise(SIGSTOP);
    ::_exit(computer.carryOut(moveConfiguration()).status);
  }
  int status = 0;
  for (int stop = 0; ::waitpid(child, &status, 0) == child && WIFSTOPPED(status); ++stop) {
    if (stop == number) ::kill(child, SIGKILL);
    ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
  }
  return WIFSIGNALED(status);
}

TEST(InterruptedInstall, TheTargetIsAlwaysTheOldFileOrTheNewOne) {
  const std::string oldBytes = listWith(std::string(100'000, 'o'));
  const std::string newBytes = listWith(std::string(200'000, 'n'));
  int stop = 0;
  int sawOld = 0;
  int sawNew = 0;
  for (bool isKilled = true; isKilled; ++stop) {
    const FolderComputer computer;
    computer.put(kConfiguration, oldBytes);
    computer.put(kTemporaryList, newBytes);
    isKilled = killedAtStop(computer, stop);
    const std::string target = computer.read(kConfiguration);
    (target == newBytes ? sawNew : sawOld) += 1;
    EXPECT_TRUE(target == oldBytes || target == newBytes) << "killed at stop " << stop;
    const std::string previous = computer.read("/etc/norvik/svr.cfg.previous");
    EXPECT_TRUE(previous.empty() || previous == oldBytes) << "killed at stop " << stop;
    if (target == newBytes) {
      EXPECT_EQ(previous, oldBytes) << "killed at stop " << stop;
      continue;
    }
    // What was not installed is still at its temporary path, and the next attempt succeeds.
    EXPECT_EQ(computer.read(kTemporaryList), newBytes) << "killed at stop " << stop;
    EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
    EXPECT_EQ(computer.read(kConfiguration), newBytes);
    EXPECT_EQ(computer.namesIn("/etc/norvik"), (std::vector<std::string>{"svr.cfg", "svr.cfg.previous"}))
        << "killed at stop " << stop;
  }
  EXPECT_GT(sawOld, 20);
  EXPECT_GT(sawNew, 4);
}

}  // namespace
}  // namespace norvik::helper
