// What only real files show of the settings files: other kinds of files, rights, broken media and full disks.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "tests/adapters/linux/administered_computer.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

constexpr const char* kConfigFile = "/etc/norvik/svr.cfg";
constexpr uid_t kUserOfNothing = 65534;

class LinuxSettings : public testing::Test {
 protected:
  void link(const char* target) { fs::create_symlink(target, folder.onDisk(kConfigFile)); }
  FileContent inspect() { return files.inspect(kConfigFile); }
  static unsigned modeOf(const std::string& diskPath) {
    struct stat status {};
    EXPECT_EQ(::stat(diskPath.c_str(), &status), 0) << diskPath;
    return status.st_mode & 07777U;
  }
  // Whether it holds in a process of its own.
  template <typename Condition>
  static bool holdsElsewhere(Condition condition) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(condition() ? 0 : 1);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status == 0;
  }

  SandboxFolder folder;
  LinuxComputer computer{AdministeredComputer::options(folder.path())};
  SettingsFiles& files = computer.services().files;
};

TEST_F(LinuxSettings, DoNotWaitForAPipe) {
  ASSERT_EQ(::mkfifo(folder.onDisk(kConfigFile).c_str(), 0644), 0);
  EXPECT_EQ(inspect().kind, FileKind::directory);
  EXPECT_EQ(inspect().reason, "Is a pipe");
}

TEST_F(LinuxSettings, DoNotReadADevice) {
  link("/dev/zero");
  EXPECT_EQ(inspect().kind, FileKind::directory);
  EXPECT_EQ(inspect().reason, "Is a device");
}

TEST_F(LinuxSettings, FollowALinkToAFile) {
  folder.put("/etc/other", "x");
  link("../other");
  EXPECT_EQ(inspect().kind, FileKind::regular);
  EXPECT_EQ(inspect().bytes, "x");
}

TEST_F(LinuxSettings, MissTheTargetOfALink) {
  link("nowhere");
  EXPECT_EQ(inspect().kind, FileKind::missing);
}

TEST_F(LinuxSettings, SayWhyALinkLeadsNowhere) {
  link("svr.cfg");
  EXPECT_EQ(inspect().kind, FileKind::unreadable);
  EXPECT_EQ(inspect().reason, "Too many levels of symbolic links");
}

TEST_F(LinuxSettings, SayThatTheMediumIsBroken) {
  link("/proc/self/mem");  // a regular file, whose beginning gives an input error
  EXPECT_EQ(inspect().kind, FileKind::unreadable);
  EXPECT_EQ(inspect().reason, "Input/output error");
}

TEST_F(LinuxSettings, SayThatAFileIsAnothers) {
  folder.put(kConfigFile, "secret");
  fs::permissions(folder.onDisk(kConfigFile), fs::perms(::getuid() == 0 ? 0600 : 0));
  EXPECT_TRUE(holdsElsewhere([this] {
    if (::getuid() == 0 && ::setuid(kUserOfNothing) != 0) return false;
    const FileContent content = inspect();
    return content.kind == FileKind::notAllowed && content.reason == "Permission denied" &&
           content.bytes.empty();
  }));
}

TEST_F(LinuxSettings, DoNotReadAFileThatIsTooLargeByFar) {
  folder.put(kConfigFile, "");
  fs::resize_file(folder.onDisk(kConfigFile), std::uintmax_t{1} << 40);
  EXPECT_EQ(inspect().kind, FileKind::tooLarge);
  EXPECT_EQ(inspect().reason, "File too large");
}

TEST_F(LinuxSettings, KeepCopiesInAFolderForTheUserAlone) {
  const mode_t before = ::umask(0);
  EXPECT_TRUE(files.keepCopy(kConfigFile, "x"));
  ::umask(before);
  EXPECT_EQ(modeOf(folder.onDisk("/.norvik/state")), 0700u);
  EXPECT_EQ(modeOf(folder.onDisk("/.norvik/state/etc/norvik")), 0700u);
  EXPECT_EQ(modeOf(folder.onDisk("/.norvik/state/etc/norvik/svr.cfg")), 0600u);
  EXPECT_EQ(files.copyOf(kConfigFile)->place, "/.norvik/state/etc/norvik/svr.cfg");
}

TEST_F(LinuxSettings, KeepNoCopyWhereThereIsNoFolderForIt) {
  folder.put("/.norvik/state", "a file");
  EXPECT_FALSE(files.keepCopy(kConfigFile, "x"));
  EXPECT_FALSE(files.copyOf(kConfigFile));
  LinuxComputerOptions options = AdministeredComputer::options(folder.path());
  options.stateFolder = "";
  EXPECT_FALSE(LinuxComputer(options).services().files.keepCopy(kConfigFile, "x"));
}

// A limit on the size of files stands for a full disk.
TEST_F(LinuxSettings, KeepTheEarlierCopyWhereTheDiskIsFull) {
  ASSERT_TRUE(files.keepCopy(kConfigFile, "earlier"));
  EXPECT_TRUE(holdsElsewhere([this] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100, 100};
    return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 && !files.keepCopy(kConfigFile, std::string(1000, 'x')) &&
           !files.setAside(kConfigFile, std::string(1000, 'x'));
  }));
  EXPECT_EQ(files.copyOf(kConfigFile)->bytes, "earlier");
  const fs::directory_iterator kept(folder.onDisk("/.norvik/state/etc/norvik"));
  EXPECT_EQ(std::distance(begin(kept), end(kept)), 1);  // nothing half written
  EXPECT_TRUE(fs::is_empty(folder.onDisk("/etc/norvik")));
}

TEST_F(LinuxSettings, SetNothingAsideThroughALink) {
  folder.put("/etc/victim", "untouched");
  fs::create_symlink("../victim", folder.onDisk("/etc/norvik/svr.cfg.damaged"));
  fs::create_symlink("../nowhere", folder.onDisk("/etc/norvik/svr.cfg.damaged.2"));
  EXPECT_EQ(files.setAside(kConfigFile, "damaged"), "/etc/norvik/svr.cfg.damaged.3");
  EXPECT_EQ(folder.read("/etc/victim"), "untouched");
  EXPECT_EQ(folder.read("/etc/nowhere"), std::nullopt);
}

TEST_F(LinuxSettings, SetAsideWithTheCopiesWhatTheUserMayNotWriteBeside) {
  fs::create_directory(folder.onDisk("/.norvik"));
  fs::permissions(folder.onDisk("/.norvik"), fs::perms(0777));
  fs::permissions(folder.onDisk("/etc/norvik"), fs::perms(0555));
  EXPECT_TRUE(holdsElsewhere([this] {
    if (::getuid() == 0 && ::setuid(kUserOfNothing) != 0) return false;
    return files.setAside(kConfigFile, "damaged") == "/.norvik/state/etc/norvik/svr.cfg.damaged";
  }));
  EXPECT_EQ(folder.read("/.norvik/state/etc/norvik/svr.cfg.damaged"), "damaged");
}

TEST_F(LinuxSettings, SayThatAFileCouldNotBeRemoved) {
  folder.put(kConfigFile, "x");
  fs::permissions(folder.onDisk("/etc/norvik"), fs::perms(0555));
  EXPECT_TRUE(holdsElsewhere([this] {
    if (::getuid() == 0 && ::setuid(kUserOfNothing) != 0) return false;
    return !files.remove(kConfigFile);
  }));
  EXPECT_EQ(folder.read(kConfigFile), "x");
}

TEST(LinuxOptions, NameTheUsersStateFolder) {
  const char* home = std::getenv("HOME");
  const std::string before = home != nullptr ? home : "";
  ::setenv("HOME", "/home/somebody", 1);
  ::unsetenv("XDG_STATE_HOME");
  EXPECT_EQ(systemOptions().stateFolder, "/home/somebody/.local/state/norvik");
  ::setenv("XDG_STATE_HOME", "relative", 1);
  EXPECT_EQ(systemOptions().stateFolder, "/home/somebody/.local/state/norvik");
  ::setenv("XDG_STATE_HOME", "/var/state", 1);
  EXPECT_EQ(systemOptions().stateFolder, "/var/state/norvik");
  ::unsetenv("XDG_STATE_HOME");
  ::setenv("HOME", before.c_str(), 1);
  EXPECT_EQ(sandboxOptions("/tmp/sandbox").stateFolder, "/.norvik/state");
}

}  // namespace
}  // namespace norvik
