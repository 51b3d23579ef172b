// The watch over the settings files: what is a change of one of them, and what is not.
#include "src/adapters/linux/file_watch.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <filesystem>
#include <fstream>

#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

class FileWatch : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& words) {
    std::ofstream(folder.path() / name) << words;
  }
  std::vector<std::string> watched(std::vector<std::string> names) {
    for (std::string& name : names) name = (folder.path() / name).string();
    return names;
  }
  static bool isReadable(const LinuxFileWatch& watch) {
    pollfd descriptor{watch.descriptor(), POLLIN, 0};
    return ::poll(&descriptor, 1, 0) == 1;
  }

  TemporaryFolder folder;
};

TEST_F(FileWatch, NothingHasHappenedAtFirst) {
  write("svr.cfg", "a");
  LinuxFileWatch watch(watched({"svr.cfg"}));
  EXPECT_GE(watch.descriptor(), 0);
  EXPECT_FALSE(isReadable(watch));
  EXPECT_FALSE(watch.takeChanges());
}

TEST_F(FileWatch, WritingIsAChangeOnce) {
  write("svr.cfg", "a");
  LinuxFileWatch watch(watched({"svr.cfg"}));
  write("svr.cfg", "b");
  EXPECT_TRUE(isReadable(watch));
  EXPECT_TRUE(watch.takeChanges());
  EXPECT_FALSE(isReadable(watch));
  EXPECT_FALSE(watch.takeChanges());
}

TEST_F(FileWatch, AFileThatIsReplacedGoesOnBeingWatched) {
  write("svr.cfg", "a");
  LinuxFileWatch watch(watched({"svr.cfg"}));
  for (int i = 0; i < 3; ++i) {
    write("new", "b");
    watch.takeChanges();
    std::filesystem::rename(folder.path() / "new", folder.path() / "svr.cfg");
    EXPECT_TRUE(watch.takeChanges()) << i;
  }
  write("svr.cfg", "c");
  EXPECT_TRUE(watch.takeChanges());
}

TEST_F(FileWatch, RemovingAndChangingRightsAreChanges) {
  write("svr.cfg", "a");
  LinuxFileWatch watch(watched({"svr.cfg"}));
  std::filesystem::permissions(folder.path() / "svr.cfg", std::filesystem::perms::none);
  EXPECT_TRUE(watch.takeChanges());
  std::filesystem::remove(folder.path() / "svr.cfg");
  EXPECT_TRUE(watch.takeChanges());
  write("svr.cfg", "a");
  EXPECT_TRUE(watch.takeChanges());
}

TEST_F(FileWatch, OtherFilesOfTheFolderAreNone) {
  write("svr.cfg", "a");
  LinuxFileWatch watch(watched({"svr.cfg"}));
  write("svr.cfg.damaged", "b");
  write("svr", "b");
  EXPECT_TRUE(isReadable(watch));
  EXPECT_FALSE(watch.takeChanges());
  EXPECT_FALSE(isReadable(watch));
}

TEST_F(FileWatch, AFolderThatIsMissingIsWaitedFor) {
  LinuxFileWatch watch(watched({"etc/norvik/svr.cfg"}));
  std::filesystem::create_directory(folder.path() / "etc");
  EXPECT_TRUE(watch.takeChanges());
  std::filesystem::create_directory(folder.path() / "etc/norvik");
  EXPECT_TRUE(watch.takeChanges());
  write("etc/norvik/svr.cfg", "a");
  EXPECT_TRUE(watch.takeChanges());
}

TEST_F(FileWatch, AFolderThatGoesAndComesBackIsWatchedAgain) {
  std::filesystem::create_directory(folder.path() / "norvik");
  LinuxFileWatch watch(watched({"norvik/svr.cfg"}));
  std::filesystem::remove(folder.path() / "norvik");
  EXPECT_TRUE(watch.takeChanges());
  std::filesystem::create_directory(folder.path() / "norvik");
  EXPECT_TRUE(watch.takeChanges());
  write("norvik/svr.cfg", "a");
  EXPECT_TRUE(watch.takeChanges());
}

TEST_F(FileWatch, FilesInOneFolderAreToldFromThoseInAnother) {
  std::filesystem::create_directory(folder.path() / "one");
  std::filesystem::create_directory(folder.path() / "other");
  LinuxFileWatch watch(watched({"one/a", "other/b"}));
  write("one/b", "1");
  write("other/a", "1");
  EXPECT_FALSE(watch.takeChanges());
  write("other/b", "1");
  EXPECT_TRUE(watch.takeChanges());
}

}  // namespace
}  // namespace norvik
