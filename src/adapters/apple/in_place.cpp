// Only calls of POSIX. A reader that looks while the file is written can see a part of both texts.
#include "src/adapters/apple/in_place.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

// A longer file is no property list that a reader takes, so that there is nothing to put back.
constexpr std::size_t kMaxKeptBytes = std::size_t{64} << 20;

bool writeFromStart(const Descriptor& file, std::string_view text) {
  return ::lseek(file.number(), 0, SEEK_SET) == 0 && writeAll(file, text);
}

bool cut(const Descriptor& file, std::size_t size) {
  return ::ftruncate(file.number(), static_cast<off_t>(size)) == 0;
}

// The old text with line feeds up to the length of the new one is written in one go; the end is cut last.
bool write(const Descriptor& file, std::string_view text, std::size_t oldSize) {
  std::string block(text);
  block.resize(std::max(text.size(), std::min(oldSize, kMaxKeptBytes)), '\n');
  return writeFromStart(file, block) && syncFile(file.number()) && cut(file, text.size());
}

bool replaceOld(const Descriptor& file, std::string_view text) {
  struct stat status {};
  if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  const auto size = static_cast<std::size_t>(status.st_size);
  const auto old = size <= kMaxKeptBytes ? readToEnd(file, size, kMaxKeptBytes) : std::nullopt;
  if (!old && size <= kMaxKeptBytes) return false;
  if (write(file, text, size)) return true;
  if (old && writeFromStart(file, *old)) cut(file, old->size());
  return false;
}

}  // namespace

bool replaceInPlace(const std::string& path, std::string_view text) {
  if (const Descriptor file = openToChange(path, WhereMissing::fail); file || errno != ENOENT)
    return file && replaceOld(file, text);
  const Descriptor made = openToChange(path, WhereMissing::create);
  if (!made) return false;
  if (write(made, text, 0)) return true;
  ::unlink(path.c_str());
  return false;
}

}  // namespace norvik
