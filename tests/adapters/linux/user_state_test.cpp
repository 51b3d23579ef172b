// The user's own small files on a real file system: who may read them, what is not followed, and several
// programs at once.
#include "src/adapters/linux/user_state.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

class UserStateOnDisk : public testing::Test {
 protected:
  static constexpr const char* kFolder = "/home/.local/state/norvik";
  static constexpr const char* kName = "history.jsonl";

  std::filesystem::path disk(const std::string& name = kName) {
    return folder.onDisk(std::string(kFolder) + "/" + name);
  }
  void makeFolder() { std::filesystem::create_directories(disk().parent_path()); }
  static unsigned modeOf(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
  }
  std::string add(const std::string& line) {
    return state.update(kName, [&line](const std::string& bytes) { return bytes + line + "\n"; });
  }

  SandboxFolder folder;
  LinuxUserState state{RootFolder(folder.path()), kFolder, ::getuid()};
};

TEST_F(UserStateOnDisk, OnlyTheUserMayRead) {
  EXPECT_EQ(state.read(kName).kind, FileKind::missing);
  EXPECT_EQ(add("one"), "");
  EXPECT_EQ(add("two"), "");
  EXPECT_EQ(state.read(kName).bytes, "one\ntwo\n");
  EXPECT_EQ(modeOf(disk()), 0600U);
  EXPECT_EQ(modeOf(disk().parent_path()), 0700U);
  EXPECT_EQ(state.placeOf(kName), std::string(kFolder) + "/" + kName);
  EXPECT_FALSE(state.userName().empty());
}

TEST_F(UserStateOnDisk, WhatIsNoFileIsNeitherReadNorReplaced) {
  makeFolder();
  std::ofstream(disk("elsewhere")) << "theirs";
  std::filesystem::create_symlink(disk("elsewhere"), disk());
  EXPECT_EQ(state.read(kName).reason, "Is a link");
  EXPECT_EQ(add("one"), "Is a link");
  EXPECT_TRUE(std::filesystem::is_symlink(disk()));
  std::filesystem::remove(disk());
  std::filesystem::create_directory(disk());
  EXPECT_EQ(add("one"), "Is a directory");
  std::filesystem::remove(disk());
  ASSERT_EQ(::mkfifo(disk().c_str(), 0600), 0);
  EXPECT_EQ(add("one"), "Is a pipe");
}

TEST_F(UserStateOnDisk, AFileThatIsTooLongIsLeft) {
  makeFolder();
  std::ofstream(disk()) << "x";
  std::filesystem::resize_file(disk(), 100'000'000);
  EXPECT_EQ(add("one"), "File too large");
  EXPECT_EQ(std::filesystem::file_size(disk()), 100'000'000U);
}

TEST_F(UserStateOnDisk, AFolderThatCannotBeMadeIsSaid) {
  std::ofstream(folder.onDisk("/home")) << "a file";
  EXPECT_EQ(add("one"), "Not a directory");
  EXPECT_EQ(state.hold("trial"), nullptr);
}

TEST_F(UserStateOnDisk, NothingIsKeptWithoutAFolder) {
  LinuxUserState nowhere{RootFolder(folder.path()), "", ::getuid()};
  EXPECT_NE(nowhere.update(kName, [](const std::string&) { return "x"; }), "");
  EXPECT_EQ(nowhere.read(kName).kind, FileKind::missing);
}

TEST_F(UserStateOnDisk, ProgramsThatWriteAtOnceLoseNothing) {
  constexpr int kPrograms = 4, kLines = 25;
  std::vector<pid_t> children;
  for (int program = 0; program < kPrograms; ++program) {
    const pid_t child = ::fork();
    if (child == 0) {
      bool ok = true;
      for (int i = 0; i < kLines; ++i) ok = add("line") == "" && ok;
      ::_exit(ok ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(state.read(kName).bytes.size(), kPrograms * kLines * std::string("line\n").size());
}

TEST_F(UserStateOnDisk, AMarkIsGoneWithItsProgram) {
  Pipe ready = makePipe();
  const pid_t child = ::fork();
  if (child == 0) {
    const auto mark = state.hold("trial");
    const bool told = ::write(ready.writing.number(), mark != nullptr ? "y" : "n", 1) == 1;
    if (told) ::pause();
    ::_exit(1);
  }
  char answer = 0;
  ASSERT_EQ(::read(ready.reading.number(), &answer, 1), 1);
  EXPECT_EQ(answer, 'y');
  EXPECT_EQ(state.hold("trial"), nullptr);
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_NE(state.hold("trial"), nullptr);
}

}  // namespace
}  // namespace norvik
