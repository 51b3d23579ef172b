// Where this computer's absolute paths are on the disk: unchanged, or below the root folder of a sandbox.
// Computes paths; touches no file. This is not a jail: ".." and symbolic links are followed.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

class RootFolder {
 public:
  // An empty folder means the system's own root. Trailing slashes do not count.
  explicit RootFolder(std::string_view folder = {});

  // The folder without a trailing slash; empty for the system's own root.
  const std::string& folder() const { return folder_; }
  // Where the computer's `path` is on the disk. A relative path stays relative to the working folder.
  std::string onDisk(std::string_view path) const;
  // The computer's path for a path on the disk; the path itself if it is not below the folder.
  std::string onComputer(std::string_view diskPath) const;
  // Whether a path on the disk is below the folder.
  bool holds(std::string_view diskPath) const;

 private:
  std::string folder_;
};

}  // namespace norvik
