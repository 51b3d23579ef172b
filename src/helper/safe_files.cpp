// System calls on descriptors. A path is used once, to open; whatever is decided is decided about what was
// opened.
#include "src/helper/safe_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <system_error>

#include "src/adapters/posix/lock_folders.h"
#include "src/helper/allowed_lines.h"

namespace norvik::helper {

namespace {

constexpr mode_t kMode = 0644;
constexpr mode_t kFolderMode = 0755;
constexpr int kAlways = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
  throw StepFailed(path + ": " + reason);
}

[[noreturn]] void failByErrno(const std::string& path) {
  fail(path, std::generic_category().message(errno));
}

// A path split at its last slash. Paths here are absolute.
struct Place {
  std::string folder;
  std::string name;
};

Place placeOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

// The folder belongs to the system, so links on the way to it are the administrator's.
Descriptor openFolder(const std::string& path) {
  return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

// Refuses a file on another file system, because the user who mounted it could block the opening.
Descriptor openInside(const Descriptor& folder, const std::string& name) {
  open_how how{};
  how.flags = O_RDONLY | kAlways;
  how.resolve = RESOLVE_NO_XDEV | RESOLVE_NO_SYMLINKS | RESOLVE_BENEATH;
  long file = ::syscall(SYS_openat2, folder.number(), name.c_str(), &how, sizeof how);
  if (file < 0 && (errno == ENOSYS || errno == EPERM))  // an old system, or one that knows the call not yet
    file = ::openat(folder.number(), name.c_str(), O_RDONLY | kAlways);
  return Descriptor(static_cast<int>(file));
}

std::string reasonNotToOpen(int error) {
  switch (error) {
    case ELOOP:
      return "is a symbolic link";
    case EXDEV:
      return "is on another file system than its folder";
    default:
      return std::generic_category().message(error);
  }
}

struct stat statusOf(const CheckedFile& file) {
  struct stat status {};
  if (::fstat(file.file.number(), &status) != 0) failByErrno(file.path);
  return status;
}

CheckedFile open(const std::string& path) {
  Place place = placeOf(path);
  CheckedFile result{openFolder(place.folder), std::move(place.name), path, Descriptor()};
  if (!result.folder) failByErrno(place.folder);
  result.file = openInside(result.folder, result.name);
  if (!result.file) fail(path, reasonNotToOpen(errno));
  if (!S_ISREG(statusOf(result).st_mode)) fail(path, "is not a regular file");
  return result;
}

// Which file it is. Asks no file system that is a user's program, which could let this wait: it knows
// without.
std::optional<struct statx> identityOf(int descriptor, const std::string& path) {
  struct statx status {};
  const int flags = AT_STATX_DONT_SYNC | AT_NO_AUTOMOUNT | (path.empty() ? AT_EMPTY_PATH : 0);
  if (::statx(descriptor, path.c_str(), flags, STATX_TYPE | STATX_INO, &status) != 0) return std::nullopt;
  return status;
}

constexpr std::string_view kUnfinished = ".new.";  // after the final name, before the process id

// Whether the name is that of an unfinished file whose writer was killed, and the file is one that such a
// writer makes. A process of that number that still runs may be another one, but not after a day.
bool isLeftover(const Descriptor& folder, const char* name, std::string_view beginning, uid_t owner) {
  constexpr time_t kDay = time_t{24} * 60 * 60;
  const std::string_view whole = name;
  if (!whole.starts_with(beginning)) return false;
  const std::optional<int32_t> writer = processIdIn(whole.substr(beginning.size()));
  struct stat status {};
  if (!writer || ::fstatat(folder.number(), name, &status, AT_SYMLINK_NOFOLLOW) != 0) return false;
  if (!S_ISREG(status.st_mode) || status.st_uid != owner || status.st_nlink != 1) return false;
  const bool isGone = ::kill(*writer, 0) != 0 && errno == ESRCH;
  return isGone || ::time(nullptr) - status.st_mtime > kDay;
}

// What cannot be removed stays: it disturbs nobody.
void removeLeftovers(const Descriptor& folder, std::string_view beginning, uid_t owner) {
  Descriptor own(::openat(folder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  DIR* const entries = own ? ::fdopendir(own.number()) : nullptr;
  if (entries == nullptr) return;
  own.release();  // the entries close it
  while (const dirent* entry = ::readdir(entries)) {
    if (isLeftover(folder, entry->d_name, beginning, owner)) ::unlinkat(folder.number(), entry->d_name, 0);
  }
  ::closedir(entries);
}

// A file that is written beside its final place. Its name goes unless it was renamed.
class NewFile {
 public:
  // The name holds the process id, as two processes may replace the same file at once.
  NewFile(const Descriptor& folder, const std::string& finalPath, uid_t owner)
      : folder_(folder), name_("." + placeOf(finalPath).name + std::string(kUnfinished)) {
    removeLeftovers(folder, name_, owner);
    name_ += std::to_string(::getpid());
    ::unlinkat(folder.number(), name_.c_str(), 0);  // of an earlier process of that number, which was killed
    file_ = Descriptor(::openat(folder.number(), name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | kAlways, 0600));
    if (!file_) failByErrno(finalPath);
  }
  ~NewFile() {
    if (!renamed_) ::unlinkat(folder_.number(), name_.c_str(), 0);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void fill(const std::string& finalPath, std::string_view bytes, uid_t owner) {
    constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
    const bool isWritten = writeAll(file_, bytes) && ::fchown(file_.number(), owner, kSameGroup) == 0 &&
                           ::fchmod(file_.number(), kMode) == 0 && ::fsync(file_.number()) == 0;
    if (!isWritten) failByErrno(finalPath);
  }
  void renameTo(const std::string& finalPath) {
    const std::string name = placeOf(finalPath).name;
    if (::renameat(folder_.number(), name_.c_str(), folder_.number(), name.c_str()) != 0)
      failByErrno(finalPath);
    renamed_ = true;
    if (::fsync(folder_.number()) != 0) failByErrno(placeOf(finalPath).folder);
  }

 private:
  const Descriptor& folder_;
  std::string name_;
  Descriptor file_;
  bool renamed_ = false;
};

// What there is that can be kept: the bytes of a regular file. Anything else was not put there by a save.
std::optional<std::string> contentToKeep(const std::string& path) {
  try {
    return readExisting(path);
  } catch (const StepFailed&) {
    return std::nullopt;
  }
}

}  // namespace

CheckedFile openChecked(const std::string& path) {
  CheckedFile file = open(path);
  if (statusOf(file).st_nlink != 1) fail(path, "has other names (hard links)");
  return file;
}

CheckedFile openOwn(const std::string& path, uid_t user) {
  CheckedFile file = openChecked(path);
  if (statusOf(file).st_uid != user) fail(path, "belongs to somebody else");
  return file;
}

std::string readAll(const CheckedFile& file) {
  const auto expected = static_cast<std::size_t>(statusOf(file).st_size);
  if (expected > kLargestFile) fail(file.path, "is too large");
  const std::optional<std::string> bytes = readToEnd(file.file, expected, kLargestFile);
  if (!bytes) fail(file.path, errno == EFBIG ? "is too large" : std::generic_category().message(errno));
  return *bytes;
}

std::optional<std::string> readExisting(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 && errno == ENOENT) return std::nullopt;
  return readAll(open(path));
}

void removeName(const CheckedFile& file) {
  struct stat named {};
  const struct stat opened = statusOf(file);
  const bool isSame = ::fstatat(file.folder.number(), file.name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
                      named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
  if (isSame) ::unlinkat(file.folder.number(), file.name.c_str(), 0);
}

void replaceFile(const std::string& path, std::string_view bytes, uid_t owner, Previous previous) {
  const Descriptor folder = openFolder(placeOf(path).folder);
  if (!folder) failByErrno(path);
  NewFile file(folder, path, owner);
  file.fill(path, bytes, owner);
  if (previous == Previous::keepBeside) {
    if (const std::optional<std::string> kept = contentToKeep(path))
      replaceFile(path + std::string(kPreviousSuffix), *kept, owner, Previous::forget);
  }
  file.renameTo(path);
}

bool isLockFolder(int descriptor, const std::string& root) {
  const std::optional<struct statx> given = identityOf(descriptor, "");
  return given && std::ranges::any_of(kLockFolders, [&](const char* path) {
           const std::optional<struct statx> folder = identityOf(AT_FDCWD, root + path);
           return folder && folder->stx_ino == given->stx_ino &&
                  folder->stx_dev_major == given->stx_dev_major &&
                  folder->stx_dev_minor == given->stx_dev_minor;
         });
}

void makeFoldersAbove(const std::string& path) {
  const std::string folder = placeOf(path).folder;
  if (folder == "/") return;
  makeFoldersAbove(folder);
  if (::mkdir(folder.c_str(), kFolderMode) != 0 && errno != EEXIST) failByErrno(folder);
}

}  // namespace norvik::helper
