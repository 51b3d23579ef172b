// Property lists in files, through the codec that all adapters share, and the home folder.
#pragma once

#include "src/adapters/posix/root_folder.h"
#include "src/server/mac/platform/property_lists.h"

namespace norvik {

class LinuxPropertyListFiles : public PropertyListFiles {
 public:
  // `home` is the computer's path of the home folder, so it is below the root like any other path.
  LinuxPropertyListFiles(RootFolder root, std::string home)
      : root_(std::move(root)), home_(std::move(home)) {}

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override;
  // Below an existing home folder, makes the folders that are missing: on Mac OS X every home has its
  // ~/Library/Preferences from the start, while here nobody else makes it.
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override;
  std::string stringByExpandingTildeInPath(std::string_view path) override;

 private:
  void makeFoldersInHome(const std::string& path) const;

  RootFolder root_;
  std::string home_;
};

// The dictionary in a file on the disk, wherever the root is; nothing if dictionaryWithContentsOfFile would
// return nothing.
std::optional<PropertyList> readDictionary(const std::string& diskPath);

}  // namespace norvik
