// The answers of stat, compared.
#include "src/adapters/posix/polled_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace norvik {

namespace {

// The same two times have other names on a Mac.
#ifdef __APPLE__
const timespec& written(const struct stat& file) {
  return file.st_mtimespec;
}
const timespec& changed(const struct stat& file) {
  return file.st_ctimespec;
}
#else
const timespec& written(const struct stat& file) {
  return file.st_mtim;
}
const timespec& changed(const struct stat& file) {
  return file.st_ctim;
}
#endif

}  // namespace

PolledFiles::PolledFiles(std::vector<std::string> paths) : paths_(std::move(paths)) {
  std::ranges::transform(paths_, std::back_inserter(states_), stateOf);
}

bool PolledFiles::takeChanges() {
  std::vector<State> now;
  std::ranges::transform(paths_, std::back_inserter(now), stateOf);
  return std::exchange(states_, now) != now;
}

PolledFiles::State PolledFiles::stateOf(const std::string& path) {
  struct stat file {};
  if (::stat(path.c_str(), &file) == -1) return {};
  return {static_cast<long long>(file.st_dev),          static_cast<long long>(file.st_ino),
          static_cast<long long>(file.st_size),         static_cast<long long>(file.st_mode),
          static_cast<long long>(file.st_uid),          static_cast<long long>(file.st_gid),
          static_cast<long long>(written(file).tv_sec), static_cast<long long>(written(file).tv_nsec),
          static_cast<long long>(changed(file).tv_sec), static_cast<long long>(changed(file).tv_nsec)};
}

}  // namespace norvik
