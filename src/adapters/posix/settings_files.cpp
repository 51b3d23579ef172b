// Looks before it opens, writes beside before it replaces.
#include "src/adapters/posix/settings_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/property_lists/codec.h"
#include "src/adapters/services/kept_copies.h"

namespace norvik {

namespace {

constexpr mode_t kOwnersOnly = 0600;
constexpr mode_t kOwnersFolder = 0700;

struct TypeName {
  mode_t type;
  const char* reason;
};

constexpr TypeName kTypeNames[] = {
    {S_IFDIR, "Is a directory"}, {S_IFIFO, "Is a pipe"},    {S_IFCHR, "Is a device"},
    {S_IFBLK, "Is a device"},    {S_IFSOCK, "Is a socket"},
};

FileContent failure(int error) {
  const bool missing = error == ENOENT || error == ENOTDIR;
  const bool notAllowed = error == EACCES || error == EPERM;
  const FileKind kind = missing          ? FileKind::missing
                        : notAllowed     ? FileKind::notAllowed
                        : error == EFBIG ? FileKind::tooLarge
                                         : FileKind::unreadable;
  return {kind, "", missing ? "" : std::strerror(error)};
}

// What is wrong with the type of a file; nothing for a regular one.
std::optional<FileContent> wrongType(const struct stat& status) {
  if (S_ISREG(status.st_mode)) return std::nullopt;
  FileContent content{FileKind::directory, "", "Is no file"};
  for (const TypeName& name : kTypeNames) {
    if ((status.st_mode & S_IFMT) == name.type) content.reason = name.reason;
  }
  return content;
}

FileContent contentOf(const Descriptor& file, std::size_t size) {
  if (size > kMaxPropertyListBytes) return failure(EFBIG);
  try {
    auto bytes = readToEnd(file, size, kMaxPropertyListBytes);
    return bytes ? FileContent{FileKind::regular, std::move(*bytes), ""} : failure(errno);
  } catch (const std::bad_alloc&) {
    return failure(ENOMEM);
  }
}

FileContent inspectOnDisk(const std::string& diskPath) {
  struct stat status {};
  if (::stat(diskPath.c_str(), &status) != 0) return failure(errno);
  if (auto wrong = wrongType(status)) return *wrong;
  // It may have become something else meanwhile, so that opening still must not wait, nor the type be taken
  // for granted.
  const Descriptor file(::open(diskPath.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file || ::fstat(file.number(), &status) != 0) return failure(errno);
  if (auto wrong = wrongType(status)) return *wrong;
  return contentOf(file, static_cast<std::size_t>(status.st_size));
}

// Writes all bytes to the disk and closes the file, whose failure counts too.
bool finish(Descriptor file, std::string_view bytes) {
  const bool written = writeAll(file, bytes) && ::fsync(file.number()) == 0;
  return ::close(file.release()) == 0 && written;
}

// Makes what was done in a folder last.
void syncFolder(const std::string& diskPath) {
  const Descriptor folder(::open(diskPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) ::fsync(folder.number());
}

std::string folderOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

// Replaces the file in one step; it is then whole, old or new, whenever the program or the computer ends.
bool replaceOnDisk(const std::string& diskPath, std::string_view bytes) {
  std::string temporary = diskPath + ".new-XXXXXX";
  Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));  // with mode 0600
  if (!file) return false;
  if (!finish(std::move(file), bytes) || std::rename(temporary.c_str(), diskPath.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return false;
  }
  syncFolder(folderOf(diskPath));
  return true;
}

}  // namespace

PosixSettingsFiles::PosixSettingsFiles(RootFolder root, std::string stateFolder)
    : root_(std::move(root)), stateFolder_(std::move(stateFolder)) {}

FileContent PosixSettingsFiles::inspect(const std::string& path) {
  return inspectOnDisk(root_.onDisk(path));
}

std::optional<std::string> PosixSettingsFiles::placeOf(const std::string& path) const {
  return keptCopyPath(stateFolder_, path);
}

// Makes the folders above the place that are missing, for the user alone; false if there are not all then.
bool PosixSettingsFiles::makeFolderOf(const std::string& place) const {
  const std::string folder = root_.onDisk(folderOf(place));
  for (std::size_t slash = folder.find('/', root_.folder().size() + 1); slash != std::string::npos;
       slash = folder.find('/', slash + 1)) {
    ::mkdir(folder.substr(0, slash).c_str(), kOwnersFolder);
  }
  ::mkdir(folder.c_str(), kOwnersFolder);
  struct stat status {};
  return ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool PosixSettingsFiles::keepCopy(const std::string& path, std::string_view bytes) {
  const auto place = placeOf(path);
  return place && makeFolderOf(*place) && replaceOnDisk(root_.onDisk(*place), bytes);
}

std::optional<KeptCopy> PosixSettingsFiles::copyOf(const std::string& path) {
  const auto place = placeOf(path);
  struct stat status {};
  if (!place || ::stat(root_.onDisk(*place).c_str(), &status) != 0) return std::nullopt;
  FileContent content = inspect(*place);
  if (content.kind != FileKind::regular) return std::nullopt;
  return KeptCopy{std::move(content.bytes), *place, rfc3339(status.st_mtime)};
}

// To the first free of the names for the file; nothing where that cannot be written.
std::optional<std::string> PosixSettingsFiles::writeAside(const std::string& path,
                                                          std::string_view bytes) const {
  for (int number = 1; number <= kMostSetAside; ++number) {
    std::string name = setAsidePath(path, number);
    const std::string diskPath = root_.onDisk(name);
    Descriptor file(
        ::open(diskPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnersOnly));
    if (!file && errno == EEXIST) continue;
    if (!file) return std::nullopt;
    if (finish(std::move(file), bytes)) return name;
    ::unlink(diskPath.c_str());
    return std::nullopt;
  }
  return std::nullopt;
}

std::optional<std::string> PosixSettingsFiles::setAside(const std::string& path, std::string_view bytes) {
  if (auto beside = writeAside(path, bytes)) return beside;
  const auto place = placeOf(path);
  return place && makeFolderOf(*place) ? writeAside(*place, bytes) : std::nullopt;
}

bool PosixSettingsFiles::remove(const std::string& path) {
  return ::unlink(root_.onDisk(path).c_str()) == 0 || errno == ENOENT;
}

}  // namespace norvik
