// Folders as a set of paths, files as a map from paths.
#include "src/adapters/simulated/file_system.h"

namespace norvik {

namespace {

constexpr std::string_view kTemporary = "/tmp";
constexpr std::string_view kDirectories[] = {kTemporary, "/etc", "/etc/norvik", "/var/run",
                                             "/Library/Preferences"};
constexpr std::string_view kHome = "/Users/user";
constexpr std::string_view kPreferences = "/Library/Preferences";

std::string_view withoutSlash(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

// The folder that contains the path; the root folder for itself and for a path that is not absolute.
std::string_view parent(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos || slash == 0 ? "/" : path.substr(0, slash);
}

bool isBelow(std::string_view path, std::string_view folder) {
  folder = withoutSlash(folder);
  return path.size() > folder.size() + 1 && path.starts_with(folder) && path[folder.size()] == '/';
}

template <typename Container, typename KeyOf>
void eraseBelow(Container& container, std::string_view folder, KeyOf keyOf) {
  std::erase_if(container, [&](const auto& entry) { return isBelow(keyOf(entry), folder); });
}

}  // namespace

FileSystem::FileSystem() {
  for (const std::string_view path : kDirectories) addDirectory(path);
  setHome(std::string(kHome));
}

void FileSystem::setHome(const std::string& path) {
  home_ = withoutSlash(path);
  addDirectory(home_ + std::string(kPreferences));
}

bool FileSystem::isDirectory(std::string_view path) const {
  return path == "/" || directories_.contains(withoutSlash(path));
}

void FileSystem::addDirectory(std::string_view path) {
  for (path = withoutSlash(path); !isDirectory(path); path = parent(path)) {
    files_.erase(std::string(path));
    directories_.emplace(path);
  }
}

void FileSystem::removeDirectory(std::string_view path) {
  path = withoutSlash(path);
  directories_.erase(std::string(path));
  eraseBelow(directories_, path, [](const std::string& entry) { return std::string_view(entry); });
  eraseBelow(files_, path, [](const auto& entry) { return std::string_view(entry.first); });
}

std::shared_ptr<SimulatedFile> FileSystem::find(std::string_view path) const {
  const auto found = files_.find(path);
  return found == files_.end() ? nullptr : found->second;
}

void FileSystem::put(std::string_view path, std::string bytes) {
  if (isDirectory(path)) removeDirectory(path);
  const std::string_view owner = userMayWrite(path) ? kUser : kRoot;
  files_.insert_or_assign(std::string(path), std::make_shared<SimulatedFile>(
                                                 SimulatedFile{std::move(bytes), std::string(owner)}));
}

void FileSystem::remove(std::string_view path) {
  files_.erase(std::string(path));
}

bool FileSystem::userMayWrite(std::string_view path) const {
  return isBelow(path, home_) || isBelow(path, kTemporary);
}

bool FileSystem::canHold(std::string_view path) const {
  return !path.empty() && !isDirectory(path) && isDirectory(parent(path));
}

std::shared_ptr<SimulatedFile> FileSystem::create(std::string_view path, std::string_view owner) {
  std::shared_ptr<SimulatedFile> file = find(path);
  if (file == nullptr) {
    if (!canHold(path)) return nullptr;
    file = files_.emplace(path, std::make_shared<SimulatedFile>()).first->second;
  }
  *file = {"", std::string(owner)};
  return file;
}

bool FileSystem::makeDirectory(std::string_view path) {
  path = withoutSlash(path);
  if (!canHold(path) || find(path) != nullptr) return false;
  directories_.emplace(path);
  return true;
}

bool FileSystem::move(std::string_view from, std::string_view to) {
  const std::shared_ptr<SimulatedFile> file = find(from);
  std::string target(withoutSlash(to));
  if (isDirectory(target)) target += from.substr(from.rfind('/'));
  if (file == nullptr || !canHold(target)) return false;
  files_.erase(std::string(from));
  files_.insert_or_assign(target, file);
  return true;
}

}  // namespace norvik
