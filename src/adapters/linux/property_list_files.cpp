// Reads a property list only if its size is within the codec's limit; writes in place.
#include "src/adapters/linux/property_list_files.h"

#include <sys/stat.h>

#include <cerrno>
#include <new>

#include "src/adapters/linux/in_place.h"
#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/home_folder.h"
#include "src/adapters/posix/temporary_files.h"
#include "src/adapters/property_lists/codec.h"

namespace norvik {

namespace {

constexpr mode_t kPrivate = 0700;  // like every folder of personal settings

}  // namespace

std::optional<PropertyList> readDictionary(const std::string& diskPath) {
  const std::optional<std::string> bytes = readRegularFile(diskPath, kMaxPropertyListBytes);
  if (!bytes) return std::nullopt;
  try {
    std::optional<PropertyList> list = decodePropertyList(*bytes);
    if (list && list->as<PropertyList::Dictionary>() == nullptr) list.reset();
    return list;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

std::optional<PropertyList> LinuxPropertyListFiles::dictionaryWithContentsOfFile(const std::string& path) {
  return readDictionary(root_.onDisk(path));
}

bool LinuxPropertyListFiles::writeToFile(const PropertyList& dictionary, const std::string& path) {
  try {
    const std::optional<std::string> text = encodeReadableXmlPropertyList(dictionary);
    if (!text) {
      errno = EFBIG;
      return false;
    }
    if (isTemporary(path)) return writeTemporary(root_.onDisk(path), *text);
    makeFoldersInHome(path);
    return writeInPlace(root_.onDisk(path), *text);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

// What cannot be made shows when the file is opened.
void LinuxPropertyListFiles::makeFoldersInHome(const std::string& path) const {
  if (home_.empty() || !path.starts_with(home_ + "/")) return;
  for (std::size_t end = path.find('/', home_.size() + 1); end != std::string::npos;
       end = path.find('/', end + 1)) {
    ::mkdir(root_.onDisk(path.substr(0, end)).c_str(), kPrivate);
  }
}

std::string LinuxPropertyListFiles::stringByExpandingTildeInPath(std::string_view path) {
  return withHome(path, home_);
}

}  // namespace norvik
