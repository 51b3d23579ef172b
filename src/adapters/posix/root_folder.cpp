// Joins and splits paths at the root folder.
#include "src/adapters/posix/root_folder.h"

#include "src/server/mac/text/trim.h"

namespace norvik {

RootFolder::RootFolder(std::string_view folder) : folder_(withoutTrailing(folder, "/")) {}

std::string RootFolder::onDisk(std::string_view path) const {
  if (!path.starts_with('/')) return std::string(path);
  return folder_ + std::string(path);
}

std::string RootFolder::onComputer(std::string_view diskPath) const {
  return std::string(holds(diskPath) ? diskPath.substr(folder_.size()) : diskPath);
}

bool RootFolder::holds(std::string_view diskPath) const {
  return diskPath.starts_with(folder_) && diskPath.substr(folder_.size()).starts_with('/');
}

}  // namespace norvik
