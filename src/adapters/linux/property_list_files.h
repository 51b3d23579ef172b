// Property lists in files, through the codec that all adapters share, and the home folder.
#pragma once

#include "src/adapters/linux/root_folder.h"
#include "src/server/mac/platform/property_lists.h"

namespace norvik {

class LinuxPropertyListFiles : public PropertyListFiles {
 public:
  // `home` is the computer's path of the home folder, so it is below the root like any other path.
  LinuxPropertyListFiles(RootFolder root, std::string home)
      : root_(std::move(root)), home_(std::move(home)) {}

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override;
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override;
  std::string stringByExpandingTildeInPath(std::string_view path) override;

 private:
  RootFolder root_;
  std::string home_;
};

// The dictionary in a file on the disk, wherever the root is; nothing if dictionaryWithContentsOfFile would
// return nothing.
std::optional<PropertyList> readDictionary(const std::string& diskPath);

}  // namespace norvik
