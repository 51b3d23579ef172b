// Files that are looked at again: what is a change, and what is not.
#include "src/adapters/posix/polled_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

class PolledFilesTest : public testing::Test {
 protected:
  std::filesystem::path at(const std::string& name) const { return folder.path() / name; }

  TemporaryFolder folder;
};

TEST_F(PolledFilesTest, NothingHasHappenedAtFirst) {
  writeFile(at("svr.cfg"), "a");
  PolledFiles files({at("svr.cfg"), at("missing")});
  EXPECT_FALSE(files.takeChanges());
}

TEST_F(PolledFilesTest, EachChangeIsToldOnce) {
  PolledFiles files({at("svr.cfg"), at("other")});
  const auto expectTold = [&files](const char* what) {
    EXPECT_TRUE(files.takeChanges()) << what;
    EXPECT_FALSE(files.takeChanges()) << what;
  };
  writeFile(at("svr.cfg"), "a");
  expectTold("made");
  writeFile(at("svr.cfg"), "ab");
  expectTold("written");
  writeFile(at("new"), "cd");
  EXPECT_FALSE(files.takeChanges());
  std::filesystem::rename(at("new"), at("svr.cfg"));
  expectTold("replaced by one of the same length");
  std::filesystem::permissions(at("svr.cfg"), std::filesystem::perms::owner_read);
  expectTold("may be written no more");
  std::filesystem::remove(at("svr.cfg"));
  expectTold("removed");
}

TEST_F(PolledFilesTest, AFolderThatComesLaterIsNoHindrance) {
  PolledFiles files({at("later/svr.cfg")});
  std::filesystem::create_directory(at("later"));
  EXPECT_FALSE(files.takeChanges());
  writeFile(at("later/svr.cfg"), "a");
  EXPECT_TRUE(files.takeChanges());
}

}  // namespace
}  // namespace norvik
