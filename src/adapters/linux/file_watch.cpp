// One watch for each folder, since a file that is replaced is another file.
#include "src/adapters/linux/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace norvik {

namespace {

constexpr uint32_t kFileEvents =
    IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB | IN_MOVED_FROM | IN_MOVED_TO | IN_CREATE | IN_DELETE;
constexpr uint32_t kFolderEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::size_t kBufferSize = std::size_t{16} * 1024;

std::string parentOf(const std::string& path) {
  return std::filesystem::path(path).parent_path().string();
}

bool isFolder(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

}  // namespace

LinuxFileWatch::LinuxFileWatch(std::vector<std::string> paths)
    : paths_(std::move(paths)), queue_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  watchFolders();
}

// The same folder gives the same watch again, so nothing is lost by asking for all of them.
void LinuxFileWatch::watchFolders() {
  folders_.clear();
  for (const std::string& path : paths_) {
    std::string folder = parentOf(path);
    bool isParent = true;
    while (!isFolder(folder) && folder != parentOf(folder)) {
      folder = parentOf(folder);
      isParent = false;
    }
    const int watch = inotify_add_watch(queue_.number(), folder.c_str(), kFileEvents | kFolderEvents);
    if (watch != -1) folders_.push_back({folder, watch, isParent});
  }
}

bool LinuxFileWatch::concerns(int watch, const std::string& name) const {
  return std::ranges::any_of(folders_, [&](const Folder& folder) {
    if (folder.watch != watch) return false;
    const std::string changed = folder.path == "/" ? "/" + name : folder.path + "/" + name;
    return std::ranges::any_of(
        paths_, [&](const std::string& path) { return path == changed || path.starts_with(changed + "/"); });
  });
}

bool LinuxFileWatch::takeChanges() {
  bool changed = false;
  bool foldersChanged = false;
  alignas(inotify_event) std::array<char, kBufferSize> buffer;
  for (;;) {
    const ssize_t size = ::read(queue_.number(), buffer.data(), buffer.size());
    if (size <= 0) break;
    for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + at, sizeof event);
      const std::string name = event.len > 0 ? std::string(buffer.data() + at + sizeof event) : std::string();
      at += sizeof event + event.len;
      // A folder that goes or comes, and a queue that was too short: anything may have happened.
      const bool lost = (event.mask & (IN_Q_OVERFLOW | IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF)) != 0;
      const bool concerned = !lost && concerns(event.wd, name);
      changed = changed || lost || concerned;
      foldersChanged = foldersChanged || lost || (concerned && (event.mask & IN_ISDIR) != 0);
    }
  }
  if (foldersChanged) watchFolders();
  return changed;
}

}  // namespace norvik
