// Looks before it opens, writes beside before it replaces.
#include "src/adapters/posix/whole_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <utility>

namespace norvik {

namespace {

struct TypeName {
  mode_t type;
  const char* reason;
};

constexpr TypeName kTypeNames[] = {
    {S_IFDIR, "Is a directory"}, {S_IFIFO, "Is a pipe"},    {S_IFCHR, "Is a device"},
    {S_IFBLK, "Is a device"},    {S_IFSOCK, "Is a socket"}, {S_IFLNK, "Is a link"},
};

FileContent unreadContent(int error) {
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

FileContent contentOf(const Descriptor& file, std::size_t size, std::size_t most) {
  if (size > most) return unreadContent(EFBIG);
  try {
    auto bytes = readToEnd(file, size, most);
    return bytes ? FileContent{FileKind::regular, std::move(*bytes), ""} : unreadContent(errno);
  } catch (const std::bad_alloc&) {
    return unreadContent(ENOMEM);
  }
}

// Makes what was done in a folder last.
void syncFolder(const std::string& diskPath) {
  const Descriptor folder(::open(diskPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) ::fsync(folder.number());
}

}  // namespace

FileContent inspectFile(const std::string& diskPath, std::size_t most, Links links) {
  const bool follows = links == Links::followed;
  struct stat status {};
  if ((follows ? ::stat(diskPath.c_str(), &status) : ::lstat(diskPath.c_str(), &status)) != 0)
    return unreadContent(errno);
  if (auto wrong = wrongType(status)) return *wrong;
  // It may have become something else meanwhile, so that opening still must not wait, nor the type be taken
  // for granted.
  const int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | (follows ? 0 : O_NOFOLLOW);
  const Descriptor file(::open(diskPath.c_str(), flags));
  if (!file || ::fstat(file.number(), &status) != 0) return unreadContent(errno);
  if (auto wrong = wrongType(status)) return *wrong;
  return contentOf(file, static_cast<std::size_t>(status.st_size), most);
}

bool finishFile(Descriptor file, std::string_view bytes) {
  const bool written = writeAll(file, bytes) && ::fsync(file.number()) == 0;
  const int error = written ? 0 : errno;
  const bool closed = ::close(file.release()) == 0;
  if (!written) errno = error;
  return closed && written;
}

int replaceFile(const std::string& diskPath, std::string_view bytes) {
  std::string temporary = diskPath + ".new-XXXXXX";
  Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));  // with mode 0600
  if (!file) return errno;
  if (!finishFile(std::move(file), bytes) || std::rename(temporary.c_str(), diskPath.c_str()) != 0) {
    const int error = errno;
    ::unlink(temporary.c_str());
    return error;
  }
  syncFolder(folderOf(diskPath));
  return 0;
}

bool makeFolder(const std::string& diskPath, std::size_t given) {
  for (std::size_t slash = diskPath.find('/', given); slash != std::string::npos;
       slash = diskPath.find('/', slash + 1)) {
    ::mkdir(diskPath.substr(0, slash).c_str(), kOwnersFolder);
  }
  ::mkdir(diskPath.c_str(), kOwnersFolder);
  struct stat status {};
  return ::stat(diskPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string folderOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

}  // namespace norvik
