// The Linux adapter's files beyond the contract: pipes, devices, links, owners, memory.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "src/adapters/linux/property_list_files.h"
#include "src/adapters/posix/files.h"
#include "src/adapters/property_lists/codec.h"
#include "tests/adapters/contract/computer_under_test.h"
#include "tests/support/limited_memory.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

class LinuxFilesTest : public testing::Test {
 protected:
  void makePipe(const std::string& path) { ASSERT_EQ(::mkfifo(folder.onDisk(path).c_str(), 0600), 0); }
  void link(const std::string& target, const std::string& path) {
    fs::create_symlink(target, folder.onDisk(path));
  }

  SandboxFolder folder;
  PosixFiles files{RootFolder(folder.path())};
  LinuxPropertyListFiles propertyLists{RootFolder(folder.path()), "/Users/user"};
};

TEST_F(LinuxFilesTest, DoNotWaitForTheOtherEndOfAPipe) {
  makePipe("/tmp/pipe");
  EXPECT_EQ(files.fopen("/tmp/pipe", FileMode::writeBinary), nullptr);
  EXPECT_EQ(readAll(files, "/tmp/pipe"), "");
  EXPECT_FALSE(propertyLists.dictionaryWithContentsOfFile("/tmp/pipe"));
  EXPECT_FALSE(propertyLists.writeToFile(PropertyList(), "/tmp/pipe"));
  const Descriptor writer(::open(folder.onDisk("/tmp/pipe").c_str(), O_RDWR));
  EXPECT_FALSE(propertyLists.dictionaryWithContentsOfFile("/tmp/pipe"));
}

TEST_F(LinuxFilesTest, ReportAPipeThatHasNoReaderAnyMore) {
  makePipe("/etc/pipe");
  Descriptor reader(::open(folder.onDisk("/etc/pipe").c_str(), O_RDONLY | O_NONBLOCK));
  const FileRef file = files.fopen("/etc/pipe", FileMode::writeBinary);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(files.fwrite("text", 4, file), 4u);
  reader.reset();
  EXPECT_EQ(files.fwrite("text", 4, file), 0u);  // and no signal ends the tests
  files.fclose(file);
  sigset_t pending;
  sigpending(&pending);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST_F(LinuxFilesTest, FollowLinks) {
  folder.put("/tmp/target", "text");
  link("target", "/tmp/link");
  EXPECT_EQ(readAll(files, "/tmp/link"), "text");
  link("nowhere/at/all", "/tmp/dangling");
  EXPECT_EQ(readAll(files, "/tmp/dangling"), std::nullopt);
  EXPECT_EQ(files.fopen("/tmp/dangling", FileMode::writeBinary), nullptr);
}

TEST_F(LinuxFilesTest, AreClosedOnExec) {
  folder.put("/tmp/file", "text");
  for (const FileMode mode : {FileMode::readBinary, FileMode::writeBinary}) {
    const FileRef file = files.fopen("/tmp/file", mode);
    ASSERT_NE(file, nullptr);
    EXPECT_NE(::fcntl(::fileno(reinterpret_cast<FILE*>(file)), F_GETFD) & FD_CLOEXEC, 0);
    files.fclose(file);
  }
}

TEST_F(LinuxFilesTest, StayBelowTheRoot) {
  EXPECT_EQ(readAll(files, "/proc/self/status"), std::nullopt);
  const FileRef file = files.fopen("/tmp/new", FileMode::writeBinary);
  ASSERT_NE(file, nullptr);
  files.fclose(file);
  EXPECT_EQ(folder.read("/tmp/new"), "");
}

TEST_F(LinuxFilesTest, MakeDirectoriesWithTheirMode) {
  const mode_t before = ::umask(0);
  EXPECT_EQ(files.mkdir("/tmp/made", 0775), 0);
  ::umask(before);
  EXPECT_EQ(fs::status(folder.onDisk("/tmp/made")).permissions(), fs::perms(0775));
}

TEST_F(LinuxFilesTest, KeepModeAndIdentityOfAPropertyListThatIsWrittenAgain) {
  folder.put("/etc/list.plist", "old");
  fs::permissions(folder.onDisk("/etc/list.plist"), fs::perms(0640));
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(::stat(folder.onDisk("/etc/list.plist").c_str(), &before), 0);
  ASSERT_TRUE(propertyLists.writeToFile(PropertyList(), "/etc/list.plist"));
  ASSERT_EQ(::stat(folder.onDisk("/etc/list.plist").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid, before.st_uid);
}

TEST_F(LinuxFilesTest, MakeTheFoldersOfAPropertyListInTheHomeFolderOnly) {
  fs::remove_all(folder.onDisk("/Users/user/Library"));
  ASSERT_TRUE(propertyLists.writeToFile(PropertyList(), "/Users/user/Library/Preferences/x.plist"));
  EXPECT_TRUE(propertyLists.dictionaryWithContentsOfFile("/Users/user/Library/Preferences/x.plist"));
  EXPECT_EQ(fs::status(folder.onDisk("/Users/user/Library")).permissions(), fs::perms(0700));
  EXPECT_FALSE(propertyLists.writeToFile(PropertyList(), "/Users/username/Library/x.plist"));
  EXPECT_FALSE(fs::exists(folder.onDisk("/Users/username")));

  fs::remove_all(folder.onDisk("/Users/user"));
  EXPECT_FALSE(propertyLists.writeToFile(PropertyList(), "/Users/user/Library/Preferences/x.plist"));
  EXPECT_FALSE(fs::exists(folder.onDisk("/Users/user")));
}

TEST_F(LinuxFilesTest, ReadNoPropertyListFromADeviceWithoutAnEnd) {
  link("/dev/zero", "/tmp/zero");
  EXPECT_FALSE(propertyLists.dictionaryWithContentsOfFile("/tmp/zero"));
}

TEST_F(LinuxFilesTest, ReadNoPropertyListFromASparseFileLargerThanTheMemory) {
  folder.put("/tmp/sparse.plist", "");
  fs::resize_file(folder.onDisk("/tmp/sparse.plist"), std::uintmax_t{15} << 40);
  EXPECT_FALSE(propertyLists.dictionaryWithContentsOfFile("/tmp/sparse.plist"));
}

// A sanitizer needs far more address space than the program, so there is no limit to set under one.
#ifndef NORVIK_SANITIZED

TEST_F(LinuxFilesTest, ReadNoPropertyListThatTheMemoryCannotHold) {
  folder.put("/tmp/sparse.plist", "");
  fs::resize_file(folder.onDisk("/tmp/sparse.plist"), kMaxPropertyListBytes);
  const auto readsNothing = [this] {
    return !propertyLists.dictionaryWithContentsOfFile("/tmp/sparse.plist");
  };
  // Not enough for the bytes; enough for them, but not for their text.
  EXPECT_TRUE(holdsWithMemory(rlim_t{32} << 20, readsNothing));
  EXPECT_TRUE(holdsWithMemory(rlim_t{100} << 20, readsNothing));
}

TEST_F(LinuxFilesTest, KeepAFileWhoseNewPropertyListTheMemoryCannotHold) {
  folder.put("/etc/list.plist", "kept");
  const PropertyList large(PropertyList::Dictionary{{"text", PropertyList(std::string(32 << 20, 'x'))}});
  EXPECT_TRUE(holdsWithMemory(rlim_t{16} << 20,
                              [&] { return !propertyLists.writeToFile(large, "/etc/list.plist"); }));
  EXPECT_EQ(folder.read("/etc/list.plist"), "kept");
}

#endif

TEST_F(LinuxFilesTest, CountNoSlashAtTheEndOfTheRoot) {
  EXPECT_EQ(RootFolder("/a/b//").onDisk("/c"), "/a/b/c");
  EXPECT_EQ(RootFolder("/").onDisk("/c"), "/c");
  EXPECT_EQ(RootFolder().onDisk("/c"), "/c");
  EXPECT_EQ(RootFolder("/a").onDisk("c"), "c");
  EXPECT_EQ(RootFolder("/a/b").onComputer("/a/b/c"), "/c");
  EXPECT_EQ(RootFolder("/a/b").onComputer("/a/bc"), "/a/bc");
}

}  // namespace
}  // namespace norvik
