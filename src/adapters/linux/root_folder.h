// Where this computer's absolute paths lie on the disk: as they stand, or below a root folder that a sandbox
// has of its own. Computes paths; touches no file. This is no jail: ".." and symbolic links lead where they
// lead.
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
  // Where the computer's `path` lies on the disk. A relative path stays relative to the working folder.
  std::string onDisk(std::string_view path) const;
  // The computer's name for a path on the disk, which is the path itself where it is not below the folder.
  std::string onComputer(std::string_view diskPath) const;
  // Whether a path on the disk is below the folder.
  bool holds(std::string_view diskPath) const;

 private:
  std::string folder_;
};

}  // namespace norvik
