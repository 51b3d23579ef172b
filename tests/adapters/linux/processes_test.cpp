// Which processes the Linux adapter lists as applications of the user.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "src/adapters/linux/process_manager.h"
#include "src/adapters/posix/processes.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

class LinuxProcesses : public testing::Test {
 protected:
  pid_t startApplication(const std::string& bundle, const std::string& packageInfo,
                         const std::string& identifier, std::optional<uid_t> user = std::nullopt) {
    return folder.start({folder.onDisk(folder.putApplication(bundle, packageInfo, identifier)), "600"}, user);
  }
  static std::vector<int32_t> listed(LinuxProcessManager& manager) {
    std::vector<int32_t> pids;
    for (ProcessSerialNumber process; manager.GetNextProcess(process) == noErr;) {
      pids.push_back(static_cast<int32_t>(process.lowLongOfPSN));
    }
    return pids;
  }
  ProcessSerialNumber first() {
    ProcessSerialNumber process;
    EXPECT_EQ(manager.GetNextProcess(process), noErr);
    return process;
  }

  SandboxFolder folder;
  LinuxProcessManager manager{RootFolder(folder.path()), ::getuid()};
};

TEST_F(LinuxProcesses, OfAnotherUserDoNotCount) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the super-user can start processes of others";
  const pid_t theirs = startApplication("/Applications/A.app", "APPLnvka", "com.example", kNobody);
  EXPECT_TRUE(listed(manager).empty());
  LinuxProcessManager ofNobody{RootFolder(folder.path()), kNobody};
  EXPECT_EQ(listed(ofNobody), std::vector<int32_t>{theirs});
}

TEST_F(LinuxProcesses, OutsideOfTheRootDoNotCount) {
  SandboxFolder other;
  other.start({other.onDisk(other.putApplication("/Applications/A.app", "APPLnvka", "com.example")), "600"});
  EXPECT_TRUE(listed(manager).empty());
}

TEST_F(LinuxProcesses, CountWhereTheRootIsReachedThroughALink) {
  const pid_t agent = startApplication("/Applications/A.app", "APPLnvka", "com.example");
  SandboxFolder other;
  fs::create_directory_symlink(folder.path(), other.onDisk("/root"));
  LinuxProcessManager linked{RootFolder(other.onDisk("/root")), ::getuid()};
  EXPECT_EQ(listed(linked), std::vector<int32_t>{agent});
}

TEST_F(LinuxProcesses, ThatEndedDoNotCountBeforeTheyAreReaped) {
  const pid_t agent = startApplication("/Applications/A.app", "APPLnvka", "com.example");
  const ProcessSerialNumber process = first();
  ::kill(agent, SIGKILL);
  EXPECT_TRUE(eventually([this] { return listed(manager).empty(); }));
  int32_t pid = -7;
  ProcessInfoRec information;
  EXPECT_EQ(manager.GetProcessPID(process, pid), procNotFound);
  EXPECT_EQ(manager.GetProcessInformation(process, information), procNotFound);
}

TEST_F(LinuxProcesses, CountWhenTheirProgramWasReplaced) {
  const pid_t agent = startApplication("/Applications/A.app", "APPLnvka", "com.example");
  fs::remove(folder.onDisk("/Applications/A.app/Contents/MacOS/program"));
  EXPECT_EQ(listed(manager), std::vector<int32_t>{agent});
}

TEST_F(LinuxProcesses, BelongToTheInnermostBundle) {
  folder.putApplication("/Applications/Outer.app", "APPLoutr", "com.example.outer");
  startApplication("/Applications/Outer.app/Contents/Resources/Inner.app", "APPLinnr", "com.example.inner");
  const auto known = manager.ProcessInformationCopyDictionary(first());
  ASSERT_TRUE(known);
  EXPECT_EQ(*known->find("CFBundleIdentifier"), PropertyList("com.example.inner"));
  EXPECT_EQ(*known->find("FileType"), PropertyList("APPL"));
  EXPECT_EQ(*known->find("FileCreator"), PropertyList("innr"));
  EXPECT_EQ(*known->find("BundlePath"), PropertyList("/Applications/Outer.app/Contents/Resources/Inner.app"));
}

TEST_F(LinuxProcesses, HaveNoCodesOrIdentifierThatTheirBundleLacks) {
  startApplication("/Applications/A.app", "APPL", "");
  ProcessInfoRec information;
  ASSERT_EQ(manager.GetProcessInformation(first(), information), noErr);
  EXPECT_EQ(information.processType, 0u);
  EXPECT_EQ(information.processSignature, 0u);
  const auto known = manager.ProcessInformationCopyDictionary(first());
  ASSERT_TRUE(known);
  EXPECT_EQ(known->find("CFBundleIdentifier"), nullptr);
}

TEST_F(LinuxProcesses, InAFolderThatIsNoBundleDoNotCount) {
  const std::string program = folder.putApplication("/Applications/A.app", "APPLnvka", "com.example");
  fs::create_directories(folder.onDisk("/Applications/Empty.app"));
  fs::rename(folder.onDisk(program), folder.onDisk("/Applications/Empty.app/program"));
  folder.start({folder.onDisk("/Applications/Empty.app/program"), "600"});
  EXPECT_TRUE(listed(manager).empty());
}

TEST_F(LinuxProcesses, AreNotSignalledAsAGroup) {
  PosixProcessServices posix(1);
  // Would end the tests themselves.
  EXPECT_EQ(posix.kill(0, Signal::user2), KillResult::otherError);
}

// In a child without the rights of the super-user, which the tests may have.
TEST_F(LinuxProcesses, OfOthersExistButTakeNoSignal) {
  const pid_t child = ::fork();
  if (child == 0) {
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) ::_exit(2);
    PosixProcessServices posix(1);
    ::_exit(posix.kill(1, Signal::none) == KillResult::otherError ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST_F(LinuxProcesses, WaitLessOnAFasterClock) {
  PosixProcessServices fast(100);
  const auto before = std::chrono::steady_clock::now();
  fast.usleep(1000000);
  const auto waited = std::chrono::steady_clock::now() - before;
  EXPECT_GE(waited, std::chrono::milliseconds(10));
  EXPECT_LT(waited, std::chrono::milliseconds(500));
}

}  // namespace
}  // namespace norvik
