// A folder of a test's own on the disk.
#pragma once

#include <chrono>
#include <filesystem>

#include "tests/support/waiting.h"

namespace norvik {

class TemporaryFolder {
 public:
  // Makes an empty folder below the system's folder for temporary files, named after the running test, which
  // only the user may enter. Throws std::runtime_error where this is not possible. The limit is the time that
  // its programs have to end when the folder is removed.
  explicit TemporaryFolder(std::chrono::milliseconds limit = kPatience);
  // Removes the folder with all that is in it. The test fails where a program of the folder still runs, where
  // this process still has one of its files open, or where the folder cannot be removed.
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // Absolute, and without a slash at the end.
  const std::filesystem::path& path() const { return path_; }

 private:
  std::chrono::milliseconds limit_;
  std::filesystem::path path_;
};

}  // namespace norvik
