// What the helper does itself, with every kind of file, of every owner, at the temporary path and at the
// target.
#include "src/helper/steps.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <thread>

#include "src/adapters/property_lists/codec.h"
#include "src/helper/safe_files.h"
#include "tests/helper/computer.h"
#include "tests/support/waiting.h"

namespace norvik::helper {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPreviousConfiguration = "/etc/norvik/svr.cfg.previous";

mode_t modeOf(const fs::path& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

std::size_t entriesIn(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

struct StepsTest : testing::Test {
  FolderComputer computer;

  // Nothing of the save may have happened.
  void expectRefused(const SpelledLine& line, const std::string& reason) {
    const std::string before = computer.read(line.back());
    const StepOutcome outcome = computer.carryOut(line);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.words.find(reason), std::string::npos) << outcome.words;
    EXPECT_EQ(computer.read(line.back()), before);
    EXPECT_FALSE(computer.has(kPreviousConfiguration));
  }
};

TEST_F(StepsTest, AMoveInstallsTheListAndKeepsThePrevious) {
  computer.put(kConfiguration, listWith("old"));
  ::chmod(computer.onDisk(kConfiguration).c_str(), 0600);
  computer.put(kTemporaryList, listWith("new"));
  const StepOutcome outcome = computer.carryOut(moveConfiguration());
  EXPECT_EQ(outcome.status, 0) << outcome.words;
  EXPECT_EQ(outcome.words, "");
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
  EXPECT_EQ(computer.read(kPreviousConfiguration), listWith("old"));
  EXPECT_EQ(modeOf(computer.onDisk(kConfiguration)), 0644U);
  EXPECT_EQ(modeOf(computer.onDisk(kPreviousConfiguration)), 0644U);
  EXPECT_FALSE(computer.has(kTemporaryList));
  EXPECT_EQ(entriesIn(computer.onDisk("/etc/norvik")), 2U);
}

TEST_F(StepsTest, TheFirstMoveHasNoPrevious) {
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
  EXPECT_EQ(entriesIn(computer.onDisk("/etc/norvik")), 1U);
}

TEST_F(StepsTest, LinesAreInstalledWithoutKeepingThePrevious) {
  computer.put(kLaunchdConfiguration, "limit maxfiles 1 2\n");
  computer.put(kTemporaryLines, "limit maxfiles 3 4\nsetenv A \xc3\xa9\n");
  EXPECT_EQ(computer.carryOut(moveLaunchdConfiguration()).status, 0);
  EXPECT_EQ(computer.read(kLaunchdConfiguration), "limit maxfiles 3 4\nsetenv A \xc3\xa9\n");
  EXPECT_FALSE(computer.has("/etc/launchd.conf.previous"));
}

TEST_F(StepsTest, AMoveWithoutTheTargetsFolderFails) {
  fs::remove(computer.onDisk("/etc/norvik"));
  computer.put(kTemporaryList, listWith("new"));
  expectRefused(moveConfiguration(), "No such file or directory");
  EXPECT_TRUE(computer.has(kTemporaryList));
}

// What a file must be at the temporary path.

TEST_F(StepsTest, NothingAtTheTemporaryPathIsRefused) {
  expectRefused(moveConfiguration(), "No such file or directory");
}

TEST_F(StepsTest, ASymbolicLinkAtTheTemporaryPathIsRefused) {
  computer.put("/secret", listWith("secret"));
  fs::create_symlink(computer.onDisk("/secret"), computer.onDisk(kTemporaryList));
  expectRefused(moveConfiguration(), "is a symbolic link");
  EXPECT_TRUE(computer.has("/secret"));
}

TEST_F(StepsTest, AHardLinkAtTheTemporaryPathIsRefused) {
  computer.put("/secret", listWith("secret"));
  fs::create_hard_link(computer.onDisk("/secret"), computer.onDisk(kTemporaryList));
  expectRefused(moveConfiguration(), "hard links");
}

TEST_F(StepsTest, APipeAtTheTemporaryPathIsRefusedAtOnce) {
  ASSERT_EQ(::mkfifo(computer.onDisk(kTemporaryList).c_str(), 0666), 0);
  expectRefused(moveConfiguration(), "is not a regular file");
}

TEST_F(StepsTest, ADirectoryAtTheTemporaryPathIsRefused) {
  fs::create_directory(computer.onDisk(kTemporaryList));
  expectRefused(moveConfiguration(), "is not a regular file");
}

TEST_F(StepsTest, ADeviceAtTheTemporaryPathIsRefused) {
  if (::mknod(computer.onDisk(kTemporaryList).c_str(), S_IFCHR | 0666, makedev(1, 5)) != 0)
    GTEST_SKIP() << "only the super-user can make a device";
  expectRefused(moveConfiguration(), "is not a regular file");
}

// Makes a socket; its name is in the folder, as the name of a socket is short.
void makeSocket(const fs::path& path) {
  const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const Descriptor folder(::open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const std::string name =
      "/proc/self/fd/" + std::to_string(folder.number()) + "/" + path.filename().native();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(name.size(), sizeof address.sun_path);
  name.copy(address.sun_path, name.size());
  ASSERT_EQ(::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

TEST_F(StepsTest, ASocketAtTheTemporaryPathIsRefused) {
  makeSocket(computer.onDisk(kTemporaryList));
  expectRefused(moveConfiguration(), "No such device or address");
}

TEST_F(StepsTest, SomebodyElsesFileAtTheTemporaryPathIsRefused) {
  computer.put(kTemporaryList, listWith("new"));
  const StepOutcome outcome = computer.carryOut(moveConfiguration(), ::getuid() + 1);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.words.find("belongs to somebody else"), std::string::npos) << outcome.words;
  EXPECT_FALSE(computer.has(kConfiguration));
}

// What the system itself keeps people from doing in /tmp must not be relied on: fs.protected_symlinks and its
// like hold in sticky folders alone, and may be off. The folder here is none.
TEST_F(StepsTest, TheTemporaryFolderHereHasNoProtectionOfTheSystems) {
  struct stat status {};
  ASSERT_EQ(::stat(computer.onDisk("/tmp").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & S_ISVTX, 0U);
}

TEST_F(StepsTest, ATooLargeFileIsRefused) {
  computer.put(kTemporaryList, listWith("new"));
  fs::resize_file(computer.onDisk(kTemporaryList), kLargestFile + 1);
  expectRefused(moveConfiguration(), "is too large");
}

TEST_F(StepsTest, AFileThatItsOwnerHoldsALeaseOnIsRefusedAtOnce) {
  computer.put(kTemporaryList, listWith("new"));
  const Descriptor holder(::open(computer.onDisk(kTemporaryList).c_str(), O_RDWR | O_CLOEXEC));
  if (::fcntl(holder.number(), F_SETLEASE, F_WRLCK) != 0) GTEST_SKIP() << "this file system has no leases";
  ::signal(SIGIO, SIG_IGN);
  expectRefused(moveConfiguration(), "Resource temporarily unavailable");
}

TEST_F(StepsTest, AFileThatIsSwappedAfterItWasCheckedIsNotLookedAt) {
  computer.put(kTemporaryList, listWith("checked"));
  computer.put("/tmp/other", listWith("other"));
  const CheckedFile file = openOwn(computer.onDisk(kTemporaryList), ::getuid());
  fs::rename(computer.onDisk("/tmp/other"), computer.onDisk(kTemporaryList));
  EXPECT_EQ(readAll(file), listWith("checked"));
  removeName(file);
  EXPECT_EQ(computer.read(kTemporaryList), listWith("other"));  // it is not what was installed
}

// Somebody puts one thing after another at the path while it is installed, as fast as possible. A second name
// of a file may go right after it was opened, so what keeps other people's files out is their owner.
TEST_F(StepsTest, WhateverIsSwappedMeanwhileOnlyACheckedFileIsInstalled) {
  computer.put("/secret", listWith("secret"));
  computer.put("/own", listWith("own"));
  const bool canGiveAway = ::chown(computer.onDisk("/secret").c_str(), 1234, 1234) == 0;
  const std::jthread swapper([&](const std::stop_token& stop) {
    const fs::path next = computer.onDisk("/tmp/next");
    for (int i = 0; !stop.stop_requested(); ++i) {
      std::error_code ignored;
      if (i % 3 == 0) fs::create_symlink(computer.onDisk("/secret"), next, ignored);
      if (i % 3 == 1 && canGiveAway) fs::create_hard_link(computer.onDisk("/secret"), next, ignored);
      if (i % 3 == 2) fs::copy_file(computer.onDisk("/own"), next, ignored);
      fs::rename(next, computer.onDisk(kTemporaryList), ignored);
      fs::remove(next, ignored);
    }
  });
  int installed = 0;
  int refused = 0;
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while ((installed < 20 || refused < 20) && std::chrono::steady_clock::now() < end) {
    const StepOutcome outcome = computer.carryOut(moveConfiguration());
    (outcome.status == 0 ? installed : refused) += 1;
    if (installed == 0) continue;
    ASSERT_EQ(computer.read(kConfiguration), listWith("own"));
  }
  EXPECT_GE(installed, 20);
  EXPECT_GE(refused, 20);
  EXPECT_EQ(computer.read("/secret"), listWith("secret"));
}

// A system without openat2, which a filter simulates.

bool hideOpenat2() {
  sock_filter filter[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog program{std::size(filter), filter};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST_F(StepsTest, LinksAndPipesAreRefusedByAnOlderSystemToo) {
  constexpr int kNoFilter = 99;
  const auto statusThere = [this] {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(hideOpenat2() ? computer.carryOut(moveConfiguration()).status : kNoFilter);
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  };
  const fs::path temporary = computer.onDisk(kTemporaryList);
  computer.put("/secret", listWith("secret"));
  fs::create_symlink(computer.onDisk("/secret"), temporary);
  ASSERT_EQ(statusThere(), 1);
  fs::remove(temporary);
  fs::create_hard_link(computer.onDisk("/secret"), temporary);
  EXPECT_EQ(statusThere(), 1);
  fs::remove(temporary);
  ASSERT_EQ(::mkfifo(temporary.c_str(), 0666), 0);
  EXPECT_EQ(statusThere(), 1);
  fs::remove(temporary);
  EXPECT_FALSE(computer.has(kConfiguration));
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(statusThere(), 0);
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
}

TEST_F(StepsTest, AListThatIsNoDictionaryIsRefused) {
  for (const char* bytes :
       {"", "x", "\n", "{ a = 1; }", "bplist00", "<?xml version=\"1.0\"?><plist><array/></plist>",
        "<?xml version=\"1.0\"?><plist><dict>", "<plist><dict/></plist>"}) {
    computer.put(kTemporaryList, bytes);
    expectRefused(moveConfiguration(), "is not a property list");
  }
  std::string cut = listWith("new");
  while (cut.size() > 1) {
    cut.resize(cut.size() / 2);
    computer.put(kTemporaryList, cut);
    expectRefused(moveConfiguration(), "is not a property list");
  }
}

TEST_F(StepsTest, LinesThatAreNoTextAreRefused) {
  for (const std::string& bytes : {std::string("a\xff\n"), std::string("a\0b\n", 4), std::string("\xc3")}) {
    computer.put(kTemporaryLines, bytes);
    expectRefused(moveLaunchdConfiguration(), "is not a text");
  }
}

// What is at the target is replaced and never written into.

TEST_F(StepsTest, ASymbolicLinkAtTheTargetIsReplacedAndNotFollowed) {
  computer.put("/other", listWith("other"));
  fs::create_symlink(computer.onDisk("/other"), computer.onDisk(kConfiguration));
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.read("/other"), listWith("other"));
  EXPECT_FALSE(fs::is_symlink(computer.onDisk(kConfiguration)));
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
  EXPECT_FALSE(computer.has(kPreviousConfiguration));  // what a link leads to is not copied
}

TEST_F(StepsTest, AHardLinkAtTheTargetIsReplacedAndNotWrittenInto) {
  computer.put("/other", listWith("other"));
  fs::create_hard_link(computer.onDisk("/other"), computer.onDisk(kConfiguration));
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.read("/other"), listWith("other"));
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
}

TEST_F(StepsTest, APipeAtTheTargetIsReplacedAtOnce) {
  ASSERT_EQ(::mkfifo(computer.onDisk(kConfiguration).c_str(), 0666), 0);
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
}

TEST_F(StepsTest, ASocketAtTheTargetIsReplaced) {
  makeSocket(computer.onDisk(kConfiguration));
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
  EXPECT_FALSE(computer.has(kPreviousConfiguration));
}

TEST_F(StepsTest, ADeviceAtTheTargetIsReplacedAndNotWrittenTo) {
  if (::mknod(computer.onDisk(kConfiguration).c_str(), S_IFCHR | 0666, makedev(1, 7)) != 0)
    GTEST_SKIP() << "only the super-user can make a device";
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_TRUE(fs::is_regular_file(computer.onDisk(kConfiguration)));
  EXPECT_EQ(computer.read(kConfiguration), listWith("new"));
}

TEST_F(StepsTest, SomebodyElsesFileAtTheTargetIsReplacedByOneOfTheSuperUsers) {
  if (::getuid() != 0) GTEST_SKIP() << "only the super-user can give a file away";
  computer.put(kConfiguration, listWith("old"));
  ASSERT_EQ(::chown(computer.onDisk(kConfiguration).c_str(), 1234, 1234), 0);
  ::chmod(computer.onDisk(kConfiguration).c_str(), 04777);
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  for (const char* path : {kConfiguration, kPreviousConfiguration}) {
    struct stat status {};
    ASSERT_EQ(::stat(computer.onDisk(path).c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 0U);
    EXPECT_EQ(status.st_mode & 07777U, 0644U);
  }
  EXPECT_EQ(computer.read(kPreviousConfiguration), listWith("old"));
}

TEST_F(StepsTest, ADirectoryAtTheTargetIsRefused) {
  fs::create_directory(computer.onDisk(kConfiguration));
  computer.put(kTemporaryList, listWith("new"));
  expectRefused(moveConfiguration(), "Is a directory");
  EXPECT_EQ(entriesIn(computer.onDisk("/etc/norvik")), 1U);
}

TEST_F(StepsTest, LinksAtTheNamesThatAreWrittenAreNotFollowed) {
  computer.put("/other", "other");
  computer.put(kConfiguration, listWith("old"));
  const std::string unfinished = "/etc/norvik/.svr.cfg.new." + std::to_string(::getpid());
  fs::create_symlink(computer.onDisk("/other"), computer.onDisk(unfinished));
  fs::create_symlink(computer.onDisk("/other"), computer.onDisk(kPreviousConfiguration));
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.read("/other"), "other");
  EXPECT_EQ(computer.read(kPreviousConfiguration), listWith("old"));
  EXPECT_FALSE(computer.has(unfinished));
}

// What a killed helper left.

pid_t endedProcess() {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  ::waitpid(child, nullptr, 0);
  return child;
}

void makeOlderBy(const fs::path& path, std::chrono::hours age) {
  fs::last_write_time(path, fs::last_write_time(path) - age);
}

TEST_F(StepsTest, WhatAKilledHelperLeftIsRemovedByTheNextInstall) {
  const std::string gone = std::to_string(endedProcess());
  const std::string living = std::to_string(::getppid());
  computer.put("/etc/norvik/.svr.cfg.new." + gone, "unfinished");
  computer.put("/etc/norvik/.svr.cfg.previous.new." + gone, "unfinished");
  computer.put("/etc/norvik/.svr.cfg.new." + living, "old");
  makeOlderBy(computer.onDisk("/etc/norvik/.svr.cfg.new." + living), std::chrono::hours(25));
  computer.put(kConfiguration, listWith("old"));
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_EQ(computer.namesIn("/etc/norvik"), (std::vector<std::string>{"svr.cfg", "svr.cfg.previous"}));
}

TEST_F(StepsTest, NothingElseIsTakenForALeftover) {
  const std::string gone = std::to_string(endedProcess());
  const std::string living = std::to_string(::getppid());
  const std::string ours = "/etc/norvik/.svr.cfg.new.";
  for (const std::string& name :
       {"0" + gone, "-" + gone, gone + "x", std::string("0"), std::string(), living})
    computer.put(ours + name, "not ours");
  computer.put("/etc/norvik/svr.cfg.new." + gone, "not ours");
  computer.put("/etc/norvik/.other.new." + gone, "not ours");
  computer.put("/etc/norvik/one", "two names");
  fs::create_hard_link(computer.onDisk("/etc/norvik/one"), computer.onDisk(ours + "2147483647"));
  fs::create_symlink("/nowhere", computer.onDisk(ours + "2147483646"));
  fs::create_directory(computer.onDisk(ours + "2147483645"));
  auto expected = computer.namesIn("/etc/norvik");
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  expected.emplace_back("svr.cfg");
  std::ranges::sort(expected);
  EXPECT_EQ(computer.namesIn("/etc/norvik"), expected);
}

TEST_F(StepsTest, AnUnfinishedFileOfSomebodyElseIsLeftAlone) {
  if (::getuid() != 0) GTEST_SKIP() << "only the super-user can give a file away";
  const std::string name = "/etc/norvik/.svr.cfg.new." + std::to_string(endedProcess());
  computer.put(name, "not ours");
  ASSERT_EQ(::chown(computer.onDisk(name).c_str(), 1234, 1234), 0);
  computer.put(kTemporaryList, listWith("new"));
  EXPECT_EQ(computer.carryOut(moveConfiguration()).status, 0);
  EXPECT_TRUE(computer.has(name));
}

// Mode and owner.

TEST_F(StepsTest, TheModeIsSetOnTheFileItself) {
  computer.put(kConfiguration, listWith("old"));
  ::chmod(computer.onDisk(kConfiguration).c_str(), 0600);
  EXPECT_EQ(computer.carryOut(setConfigurationMode()).status, 0);
  EXPECT_EQ(modeOf(computer.onDisk(kConfiguration)), 0644U);
}

TEST_F(StepsTest, TheOwnerIsSetOnTheFileItself) {
  computer.put(kConfiguration, listWith("old"));
  const bool isRoot = ::getuid() == 0;
  if (isRoot) {
    ASSERT_EQ(::chown(computer.onDisk(kConfiguration).c_str(), 1234, 1234), 0);
  }
  EXPECT_EQ(computer.carryOut(setConfigurationOwner()).status, 0);
  struct stat status {};
  ASSERT_EQ(::stat(computer.onDisk(kConfiguration).c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, ::getuid());
  if (isRoot) {
    EXPECT_EQ(status.st_gid, 1234U);  // the group stays
  }
}

TEST_F(StepsTest, ModeAndOwnerAreNotSetThroughLinks) {
  computer.put("/secret", "secret");
  ::chmod(computer.onDisk("/secret").c_str(), 0600);
  for (const SpelledLine& line : {setConfigurationMode(), setConfigurationOwner()}) {
    fs::create_symlink(computer.onDisk("/secret"), computer.onDisk(kConfiguration));
    EXPECT_EQ(computer.carryOut(line).status, 1);
    fs::remove(computer.onDisk(kConfiguration));
    fs::create_hard_link(computer.onDisk("/secret"), computer.onDisk(kConfiguration));
    EXPECT_EQ(computer.carryOut(line).status, 1);
    fs::remove(computer.onDisk(kConfiguration));
    ASSERT_EQ(::mkfifo(computer.onDisk(kConfiguration).c_str(), 0600), 0);
    EXPECT_EQ(computer.carryOut(line).status, 1);
    fs::remove(computer.onDisk(kConfiguration));
    makeSocket(computer.onDisk(kConfiguration));
    EXPECT_EQ(computer.carryOut(line).status, 1);
    fs::remove(computer.onDisk(kConfiguration));
    fs::create_directory(computer.onDisk(kConfiguration));
    EXPECT_EQ(computer.carryOut(line).status, 1);
    fs::remove(computer.onDisk(kConfiguration));
    EXPECT_EQ(computer.carryOut(line).status, 1);
  }
  EXPECT_EQ(modeOf(computer.onDisk("/secret")), 0600U);
}

// Preference files.

constexpr const char* kScreenSaver = "/Library/Preferences/com.apple.screensaver.plist";
constexpr const char* kWindowServer = "/Library/Preferences/com.apple.windowserver.plist";

int64_t numberAt(const PropertyList* list, const char* key) {
  return integerValue(list != nullptr ? list->find(key) : nullptr);
}

TEST_F(StepsTest, APreferenceFileIsMadeWithItsFolders) {
  EXPECT_EQ(computer.carryOut(spelledLines()[9]).status, 0);
  const auto list = decodePropertyList(computer.read(kScreenSaver));
  ASSERT_TRUE(list);
  EXPECT_EQ(numberAt(&*list, "loginWindowIdleTime"), 1200);
  EXPECT_EQ(modeOf(computer.onDisk(kScreenSaver)), 0644U);
  EXPECT_EQ(modeOf(computer.onDisk("/Library/Preferences")), 0755U);
}

TEST_F(StepsTest, APreferenceFileKeepsWhatIsNotOurs) {
  PropertyList::Dictionary others{{"Foreign", PropertyList(int64_t{-7})},
                                  {"GLCompositor", PropertyList("text")}};
  computer.put(kWindowServer, encodeBinaryPropertyList(PropertyList(others)));
  EXPECT_EQ(computer.carryOut(spelledLines()[7]).status, 0);
  const auto list = decodePropertyList(computer.read(kWindowServer));
  ASSERT_TRUE(list);
  EXPECT_EQ(numberAt(&*list, "Foreign"), -7);
  EXPECT_EQ(numberAt(list->find("GLCompositor"), "tileHeight"), 256);
  EXPECT_EQ(numberAt(list->find("GLCompositor"), "tileWidth"), 256);
}

TEST_F(StepsTest, APreferenceFileThatCannotBeUnderstoodStaysAsItIs) {
  for (const char* bytes : {"", "damaged", "<?xml version=\"1.0\"?><plist><array/></plist>"}) {
    computer.put(kScreenSaver, bytes);
    EXPECT_EQ(computer.carryOut(spelledLines()[9]).status, 1);
    EXPECT_EQ(computer.read(kScreenSaver), bytes);
  }
  fs::remove(computer.onDisk(kScreenSaver));
  fs::create_symlink(computer.onDisk("/other"), computer.onDisk(kScreenSaver));
  EXPECT_EQ(computer.carryOut(spelledLines()[9]).status, 1);
  EXPECT_FALSE(computer.has("/other"));
}

// Kernel values.

TEST_F(StepsTest, KernelValuesHaveTheirNamesOnTheMacAndFitIn32Bits) {
  computer.put("/proc/sys/fs/file-max", "9223372036854775807\n");
  computer.put("/proc/sys/fs/nr_open", "1048576\n");
  EXPECT_EQ(computer.carryOut(spelledLines()[16]).output, "2147483647\n");
  EXPECT_EQ(computer.carryOut(spelledLines()[17]).output, "1048576\n");
  computer.put("/proc/sys/fs/nr_open", "none\n");
  const StepOutcome outcome = computer.carryOut(spelledLines()[17]);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "");
}

// A disk that takes no more, as a limit of a process of its own.
TEST_F(StepsTest, AFullDiskLeavesTheOldFileAndNothingElse) {
  computer.put(kConfiguration, listWith("old"));
  computer.put(kTemporaryList, listWith(std::string(100'000, 'n')));
  const pid_t child = ::fork();
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{50'000, 50'000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(computer.carryOut(moveConfiguration()).status);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 1);
  EXPECT_EQ(computer.read(kConfiguration), listWith("old"));
  EXPECT_TRUE(computer.has(kTemporaryList));
  EXPECT_EQ(entriesIn(computer.onDisk("/etc/norvik")), 1U);
}

}  // namespace
}  // namespace norvik::helper
