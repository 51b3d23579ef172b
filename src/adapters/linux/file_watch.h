// Tells when somebody else has written, replaced or removed a settings file, without looking at it again and
// again: the system reports what happens in the folders. Uses inotify; no thread. Where the system gives no
// watch, nothing is ever reported.
#pragma once

#include <string>
#include <vector>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

class LinuxFileWatch {
 public:
  // Watches files at their paths on the disk, whether they are there or not; of a folder that is missing too,
  // its creation.
  explicit LinuxFileWatch(std::vector<std::string> paths);

  // Becomes readable when something has happened in one of the folders; -1 where there is no watch. For an
  // event loop; reading it is left to takeChanges().
  int descriptor() const { return queue_.number(); }

  // Whether one of the files may be different since the last call: its content, its name or who may read it.
  // Does not block. What happens to other files of the folders is no change.
  bool takeChanges();

 private:
  struct Folder {
    std::string path;
    int watch = -1;
    bool isParent = true;  // of a file; else a folder above one that is missing
  };
  void watchFolders();
  bool concerns(int watch, const std::string& name) const;

  std::vector<std::string> paths_;
  std::vector<Folder> folders_;
  Descriptor queue_;
};

}  // namespace norvik
