// Reads the files of a bundle's Contents.
#include "src/adapters/linux/bundle_folder.h"

#include <unistd.h>

#include "src/adapters/linux/property_list_files.h"
#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr std::size_t kPackageInfoLimit = 4096;

bool exists(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0;
}

OSType code(const std::string& bytes, std::size_t start) {
  OSType value = 0;
  for (std::size_t i = start; i < start + 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

}  // namespace

std::string applicationAbove(std::string_view executable) {
  for (std::size_t end = executable.rfind('/'); end != std::string_view::npos && end > 0;
       end = executable.rfind('/', end - 1)) {
    std::string folder(executable.substr(0, end));
    if (!folder.ends_with(".app")) continue;
    if (exists(folder + "/Contents/Info.plist") || exists(folder + "/Contents/PkgInfo")) return folder;
  }
  return {};
}

std::optional<PropertyList> infoDictionary(const std::string& bundle) {
  return readDictionary(bundle + "/Contents/Info.plist");
}

PackageCodes packageCodes(const std::string& bundle) {
  const std::optional<std::string> bytes = readRegularFile(bundle + "/Contents/PkgInfo", kPackageInfoLimit);
  if (!bytes || bytes->size() < 8) return {};
  return {code(*bytes, 0), code(*bytes, 4)};
}

}  // namespace norvik
