// Directories and links, by system calls.
#include "src/adapters/linux/process_folder.h"

#include <dirent.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <memory>

namespace norvik {

std::vector<uint32_t> processesIn(const std::string& folder) {
  std::vector<uint32_t> found;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), &::closedir);
  while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    uint32_t pid = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), pid);
    if (error == std::errc() && end == name.data() + name.size()) found.push_back(pid);
  }
  std::ranges::sort(found);
  return found;
}

std::string processFile(uint32_t pid, std::string_view name, const std::string& folder) {
  return folder + "/" + std::to_string(pid) + "/" + std::string(name);
}

std::string linkTarget(const std::string& path) {
  std::string target(PATH_MAX, '\0');
  const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
  target.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return target;
}

}  // namespace norvik
