// Where the copies are, and the names of what is set aside.
#include "src/adapters/posix/settings_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "src/adapters/posix/whole_files.h"
#include "src/adapters/property_lists/codec.h"
#include "src/adapters/services/kept_copies.h"

namespace norvik {

PosixSettingsFiles::PosixSettingsFiles(RootFolder root, std::string stateFolder)
    : root_(std::move(root)), stateFolder_(std::move(stateFolder)) {}

FileContent PosixSettingsFiles::inspect(const std::string& path) {
  return inspectFile(root_.onDisk(path), kMaxPropertyListBytes, Links::followed);
}

std::optional<std::string> PosixSettingsFiles::placeOf(const std::string& path) const {
  return keptCopyPath(stateFolder_, path);
}

bool PosixSettingsFiles::makeFolderOf(const std::string& place) const {
  return makeFolder(root_.onDisk(folderOf(place)), root_.folder().size() + 1);
}

bool PosixSettingsFiles::keepCopy(const std::string& path, std::string_view bytes) {
  const auto place = placeOf(path);
  return place && makeFolderOf(*place) && replaceFile(root_.onDisk(*place), bytes) == 0;
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
    if (finishFile(std::move(file), bytes)) return name;
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
