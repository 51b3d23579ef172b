// The sandbox's root folder.
#include "sandbox/root.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace norvik::sandbox {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLargestFile = std::size_t{64} << 20;

}  // namespace

std::optional<Root> Root::in(const fs::path& folder) {
  std::error_code error;
  const fs::path real = fs::canonical(folder, error);
  if (error || !fs::is_directory(real / kOwnFolder, error)) return std::nullopt;
  return Root(real);
}

std::optional<Root> Root::find() {
  if (const char* named = std::getenv("NORVIK_ROOT")) return in(named);
  std::error_code error;
  fs::path folder = fs::read_symlink("/proc/self/exe", error);
  while (folder.has_relative_path()) {
    folder = folder.parent_path();
    if (const auto root = in(folder)) return root;
  }
  return std::nullopt;
}

fs::path Root::inside(std::string_view path) const {
  const fs::path wanted(path);
  const bool climbs = std::find(wanted.begin(), wanted.end(), "..") != wanted.end();
  if (!wanted.is_absolute() || climbs)
    throw std::runtime_error(std::string(path) + ": not a path in the sandbox");
  fs::path place = folder_ / wanted.relative_path();
  // Try again if part of the path disappeared meanwhile: files come and go here.
  std::error_code error;
  fs::path real = fs::weakly_canonical(place, error);
  while (error == std::errc::no_such_file_or_directory) real = fs::weakly_canonical(place, error);
  if (error) throw fs::filesystem_error("cannot follow the path", place, error);
  const auto parts = std::mismatch(folder_.begin(), folder_.end(), real.begin(), real.end());
  if (parts.first != folder_.end())
    throw std::runtime_error(std::string(path) + ": leads out of the sandbox");
  return place;
}

// Without a stream, whose buffer throws when a process's file in /proc opens and then cannot be read.
std::optional<std::string> readFile(const fs::path& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  std::string content;
  std::array<char, 16384> block{};
  ssize_t got = 0;
  while (content.size() <= kLargestFile && (got = read(file, block.data(), block.size())) > 0)
    content.append(block.data(), static_cast<std::size_t>(got));
  close(file);
  if (got < 0 || content.size() > kLargestFile) return std::nullopt;
  return content;
}

void replaceFile(const fs::path& path, std::string_view content) {
  fs::path next = path;
  next += ".next." + std::to_string(getpid());
  std::ofstream file(next, std::ios::binary | std::ios::trunc);
  file << content;
  file.close();
  if (!file) {
    std::error_code ignored;
    fs::remove(next, ignored);
    throw std::runtime_error("cannot write " + path.string());
  }
  fs::rename(next, path);
}

}  // namespace norvik::sandbox
