// What the change lock of a Linux computer is beyond the contract: it needs nothing to be there, works for
// every user, and ends with its holder.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/adapters/linux/administered_computer.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr uid_t kUserWithoutRights = 65534;

// Runs the body in a process of its own; its exit status.
template <typename Body>
int exitStatusOf(Body body) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(body());
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class LinuxLock : public testing::Test {
 protected:
  bool isFree() { return other.services().locks.lock(0ms) != nullptr; }

  SandboxFolder folder;
  LinuxComputer computer{AdministeredComputer::options(folder.path())};
  LinuxComputer other{AdministeredComputer::options(folder.path())};
};

TEST_F(LinuxLock, NeedsNoFolderOfItsOwn) {
  for (const char* folderToLose : {"/etc/norvik", "/etc"}) {
    fs::remove_all(folder.onDisk(folderToLose));
    const auto lock = computer.services().locks.lock(0ms);
    EXPECT_NE(lock, nullptr);
    EXPECT_FALSE(isFree()) << folderToLose;
  }
  EXPECT_FALSE(fs::exists(folder.onDisk("/etc")));
}

TEST_F(LinuxLock, IsHadAtOnceWhereThereIsNothingToLock) {
  LinuxComputer nowhere(AdministeredComputer::options(folder.onDisk("/missing")));
  EXPECT_NE(nowhere.services().locks.lock(0ms), nullptr);
}

TEST_F(LinuxLock, NeedsNoRightToWrite) {
  fs::permissions(folder.onDisk("/etc/norvik"), fs::perms(0555));
  const int status = exitStatusOf([this] {
    if (::getuid() == 0 && ::setuid(kUserWithoutRights) != 0) return 2;
    const auto lock = computer.services().locks.lock(0ms);
    return lock != nullptr && !isFree() ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(isFree());
}

TEST_F(LinuxLock, EndsWithAProgramThatIsKilled) {
  const pid_t program = ::fork();
  if (program == 0) {
    const auto lock = computer.services().locks.lock(0ms);
    folder.put("/tmp/locked", "");
    for (;;) ::pause();
  }
  EXPECT_TRUE(eventually([this] { return folder.read("/tmp/locked").has_value(); }));
  EXPECT_FALSE(isFree());
  ::kill(program, SIGKILL);
  EXPECT_EQ(::waitpid(program, nullptr, 0), program);
  EXPECT_TRUE(isFree());
}

// Each adds to a number without any care of its own.
TEST_F(LinuxLock, IsHadByOneAtATime) {
  constexpr int kPrograms = 8;
  constexpr int kRounds = 5;
  folder.put("/tmp/number", "0");
  std::vector<pid_t> programs;
  for (int i = 0; i < kPrograms; ++i) {
    programs.push_back(::fork());
    if (programs.back() != 0) continue;
    for (int round = 0; round < kRounds; ++round) {
      const auto lock = computer.services().locks.lock(60s);
      if (lock == nullptr) ::_exit(1);
      const int number = std::stoi(folder.read("/tmp/number").value_or("-1000"));
      ::usleep(1000);
      folder.put("/tmp/number", std::to_string(number + 1));
    }
    ::_exit(0);
  }
  for (const pid_t program : programs) {
    int status = -1;
    EXPECT_EQ(::waitpid(program, &status, 0), program);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(folder.read("/tmp/number"), std::to_string(kPrograms * kRounds));
}

}  // namespace
}  // namespace norvik
