// Property lists in files by the platform's own reader and writer, and the home folder.
#pragma once

#include "src/adapters/posix/root_folder.h"
#include "src/server/mac/platform/property_lists.h"

namespace norvik {

class ApplePropertyListFiles : public PropertyListFiles {
 public:
  // `home` is the computer's path of the home folder, so it is below the root like any other path.
  ApplePropertyListFiles(RootFolder root, std::string home)
      : root_(std::move(root)), home_(std::move(home)) {}

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override;
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override;
  std::string stringByExpandingTildeInPath(std::string_view path) override;

 private:
  RootFolder root_;
  std::string home_;
};

}  // namespace norvik
