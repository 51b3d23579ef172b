// Makes the folder, and checks at its end that nobody uses it any more.
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/program.h"

namespace norvik {

namespace fs = std::filesystem;

namespace {

// A socket's path has at most 107 bytes, so the folder's must leave room for the rest.
constexpr std::size_t kLongestName = 32;

std::string nameOfTest() {
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  if (test == nullptr) return "tests";
  std::string name = std::string(test->test_suite_name()) + "." + test->name();
  for (char& character : name) {
    if (character == '/') character = '.';
  }
  return name.substr(0, kLongestName);
}

std::vector<std::string> openFilesBelow(const fs::path& folder) {
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    const std::string file = fs::read_symlink(entry.path(), error).string();
    if (!error && file.starts_with(folder.string() + "/")) files.push_back(file);
  }
  return files;
}

}  // namespace

TemporaryFolder::TemporaryFolder(std::chrono::milliseconds limit) : limit_(limit) {
  std::string pattern = (fs::temp_directory_path() / ("norvik-" + nameOfTest() + "-XXXXXX")).string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make the folder " + pattern);
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  // A program that was ended may need a moment.
  EXPECT_TRUE(eventually([this] { return processesBelow(path_).empty(); }, limit_))
      << "still running: " << testing::PrintToString(processesBelow(path_));
  EXPECT_EQ(openFilesBelow(path_), std::vector<std::string>()) << "left open";
  std::error_code error;
  fs::remove_all(path_, error);
  EXPECT_FALSE(error) << path_ << ": " << error.message();
}

}  // namespace norvik
