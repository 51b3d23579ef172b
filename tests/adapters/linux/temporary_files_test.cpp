// Writing below /tmp, with everything that somebody may have laid there.
#include "src/adapters/posix/temporary_files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>

#include "src/adapters/linux/property_list_files.h"
#include "src/adapters/posix/files.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTemporaryPath = "/tmp/norvik.prefs.tmp.server.conf.812";

// Both ways in which the pane writes there.
struct TemporaryFilesTest : testing::Test {
  TemporaryFolder folder;
  const RootFolder root{folder.path().native()};
  const fs::path place = folder.path().native() + kTemporaryPath;
  PosixFiles files{root};
  LinuxPropertyListFiles lists{root, ""};

  TemporaryFilesTest() { fs::create_directory(folder.path() / "tmp"); }

  bool writesLines() {
    const FileRef file = files.fopen(kTemporaryPath, FileMode::writeBinary);
    if (file == nullptr) return false;
    const bool isWritten = files.fwrite("new\n", 4, file) == 4;
    files.fclose(file);
    return isWritten;
  }
  bool writesList() { return lists.writeToFile(PropertyList(), kTemporaryPath); }

  // What `lay` puts at the path stays, and is not written into, through or beside.
  void expectRefused(const std::function<void()>& lay) {
    for (const bool asList : {false, true}) {
      lay();
      const auto before = fs::symlink_status(place).type();
      EXPECT_FALSE(asList ? writesList() : writesLines());
      EXPECT_EQ(fs::symlink_status(place).type(), before);
      fs::remove(place);
    }
  }
};

TEST_F(TemporaryFilesTest, ANewFileIsWrittenAndAnOwnOneReplaced) {
  EXPECT_TRUE(writesLines());
  EXPECT_EQ(contentOf(place), "new\n");
  EXPECT_TRUE(writesList());
  EXPECT_EQ(contentOf(place).rfind("<?xml", 0), 0U);
  EXPECT_TRUE(writesLines());
  EXPECT_EQ(contentOf(place), "new\n");
  EXPECT_EQ(fs::status(place).permissions() & fs::perms(0022), fs::perms::none);
}

TEST_F(TemporaryFilesTest, LinksAreNotFollowed) {
  const fs::path other = folder.path() / "other";
  writeFile(other, "other");
  expectRefused([&] { fs::create_symlink(other, place); });
  expectRefused([&] { fs::create_symlink(folder.path() / "missing", place); });
  expectRefused([&] { fs::create_hard_link(other, place); });
  EXPECT_EQ(contentOf(other), "other");
  EXPECT_FALSE(fs::exists(folder.path() / "missing"));
}

TEST_F(TemporaryFilesTest, WhatIsNoFileIsRefusedAtOnce) {
  expectRefused([&] { ASSERT_EQ(::mkfifo(place.c_str(), 0666), 0); });
  expectRefused([&] { fs::create_directory(place); });
}

TEST_F(TemporaryFilesTest, SomebodyElsesFileIsRefused) {
  writeFile(place, "theirs");
  if (::chown(place.c_str(), 4242, 4242) != 0) GTEST_SKIP() << "only the super-user can give files away";
  fs::permissions(place, fs::perms(0666));
  expectRefused([&] {
    writeFile(place, "theirs");
    ASSERT_EQ(::chown(place.c_str(), 4242, 4242), 0);
  });
}

TEST_F(TemporaryFilesTest, AListThatCouldNotBeWrittenLeavesNothing) {
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{100, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_FALSE(writesList());
  ::setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_FALSE(fs::exists(place));
}

TEST_F(TemporaryFilesTest, OtherPlacesAreWrittenInPlace) {
  EXPECT_TRUE(isTemporary("/tmp/a"));
  EXPECT_FALSE(isTemporary("/tmp"));
  EXPECT_FALSE(isTemporary("/tmpfile"));
  EXPECT_FALSE(isTemporary("/Users/user/tmp/a"));
}

}  // namespace
}  // namespace norvik
