// Exclusive creation follows no link and opens nothing that is there.
#include "src/adapters/posix/temporary_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "src/server/mac/control/tool_commands.h"

namespace norvik {

namespace {

// Its bytes are readable by all in the end, as the settings that they become; writable by the user alone.
constexpr mode_t kTemporaryMode = 0644;

bool isOwn(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1;
}

}  // namespace

// A folder below it is somebody's own, such as the home folder of a test.
bool isTemporary(std::string_view path) {
  if (!path.starts_with(kTemporaryFolder)) return false;
  const std::string_view name = path.substr(std::string_view(kTemporaryFolder).size());
  return name.starts_with('/') && name.find('/', 1) == std::string_view::npos;
}

Descriptor createTemporary(const std::string& diskPath) {
  struct stat status {};
  const bool isThere = ::lstat(diskPath.c_str(), &status) == 0;
  if (isThere && !isOwn(status)) {
    errno = EEXIST;
    return Descriptor();
  }
  if (isThere && ::unlink(diskPath.c_str()) != 0) return Descriptor();
  return Descriptor(
      ::open(diskPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kTemporaryMode));
}

bool writeTemporary(const std::string& diskPath, std::string_view bytes) {
  const Descriptor file = createTemporary(diskPath);
  if (!file) return false;
  if (writeAll(file, bytes) && syncFile(file.number())) return true;
  const int error = errno;
  ::unlink(diskPath.c_str());
  errno = error;
  return false;
}

}  // namespace norvik
