// Files with their faults as kinds and reasons.
#include "src/adapters/simulated/settings_files.h"

#include "src/adapters/property_lists/codec.h"
#include "src/adapters/services/kept_copies.h"

namespace norvik {

namespace {

constexpr unsigned kOwnersOnly = 0600;
constexpr const char* kStateFolder = "/.local/state/norvik";

}  // namespace

SimulatedSettingsFiles::SimulatedSettingsFiles(FileSystem& fileSystem, const FileFaults& faults,
                                               const SimulatedClock& clock)
    : fileSystem_(fileSystem), faults_(faults), clock_(clock) {}

FileContent SimulatedSettingsFiles::inspect(const std::string& path) {
  if (fileSystem_.isDirectory(path)) return {FileKind::directory, "", "Is a directory"};
  const auto file = fileSystem_.find(path);
  if (file == nullptr) return {};
  if (faults_.has(FileOperation::openRead, path)) return {FileKind::notAllowed, "", "Permission denied"};
  if (faults_.has(FileOperation::read, path)) return {FileKind::unreadable, "", "Input/output error"};
  if (file->bytes.size() > kMaxPropertyListBytes) return {FileKind::tooLarge, "", "File too large"};
  return {FileKind::regular, file->bytes, ""};
}

std::string SimulatedSettingsFiles::placeOf(const std::string& path) const {
  return keptCopyPath(fileSystem_.home() + kStateFolder, path).value_or("");
}

bool SimulatedSettingsFiles::write(const std::string& path, std::string_view bytes) {
  const bool fails = faults_.has(FileOperation::openWrite, path) || faults_.has(FileOperation::write, path);
  if (fails || !fileSystem_.userMayWrite(path)) return false;
  const auto file = fileSystem_.create(path, FileSystem::kUser);
  if (file == nullptr) return false;
  file->bytes = bytes;
  file->mode = kOwnersOnly;
  return true;
}

bool SimulatedSettingsFiles::keepCopy(const std::string& path, std::string_view bytes) {
  const std::string place = placeOf(path);
  if (place.empty()) return false;
  fileSystem_.addDirectory(place.substr(0, place.rfind('/')));
  if (!write(place, bytes)) return false;
  keptAt_.insert_or_assign(place, clock_.timeOfDay());
  return true;
}

std::optional<KeptCopy> SimulatedSettingsFiles::copyOf(const std::string& path) {
  const std::string place = placeOf(path);
  FileContent content = inspect(place);
  if (content.kind != FileKind::regular) return std::nullopt;
  return KeptCopy{std::move(content.bytes), place, rfc3339(keptAt_[place])};
}

std::optional<std::string> SimulatedSettingsFiles::writeAside(const std::string& path,
                                                              std::string_view bytes) {
  for (int number = 1; number <= kMostSetAside; ++number) {
    std::string name = setAsidePath(path, number);
    if (fileSystem_.find(name) != nullptr || fileSystem_.isDirectory(name)) continue;
    return write(name, bytes) ? std::optional(std::move(name)) : std::nullopt;
  }
  return std::nullopt;
}

std::optional<std::string> SimulatedSettingsFiles::setAside(const std::string& path, std::string_view bytes) {
  if (auto beside = writeAside(path, bytes)) return beside;
  const std::string place = placeOf(path);
  if (place.empty()) return std::nullopt;
  fileSystem_.addDirectory(place.substr(0, place.rfind('/')));
  return writeAside(place, bytes);
}

bool SimulatedSettingsFiles::remove(const std::string& path) {
  if (fileSystem_.isDirectory(path)) return false;
  if (fileSystem_.find(path) == nullptr) return true;
  if (!fileSystem_.userMayWrite(path)) return false;
  fileSystem_.remove(path);
  return true;
}

}  // namespace norvik
