// The platform turns bytes into lists; opening and writing the file is done here, so that a short write is
// noticed and nothing is waited for.
#include "src/adapters/apple/property_list_files.h"

#include <new>

#include "src/adapters/apple/in_place.h"
#include "src/adapters/apple/property_list_values.h"
#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/home_folder.h"
#include "src/adapters/posix/temporary_files.h"
#include "src/adapters/property_lists/codec.h"

namespace norvik {

namespace {

std::optional<PropertyList> dictionaryIn(std::string_view bytes) {
  const Owned<CFPropertyListRef> list = decodedList(bytes);
  auto value = list ? valueOf(list.get()) : std::nullopt;
  if (value && value->as<PropertyList::Dictionary>() == nullptr) value.reset();
  return value;
}

// In XML format; nothing where the list could not be read again as it is.
std::optional<std::string> readableXml(const PropertyList& dictionary) {
  const Owned<CFTypeRef> list = coreList(dictionary);
  if (!list) return std::nullopt;
  const Owned<CFDataRef> data(
      ::CFPropertyListCreateData(nullptr, list.get(), kCFPropertyListXMLFormat_v1_0, 0, nullptr));
  if (!data || static_cast<std::size_t>(::CFDataGetLength(data.get())) > kMaxPropertyListBytes)
    return std::nullopt;
  std::string text(reinterpret_cast<const char*>(::CFDataGetBytePtr(data.get())),
                   static_cast<std::size_t>(::CFDataGetLength(data.get())));
  return dictionaryIn(text) ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace

std::optional<PropertyList> ApplePropertyListFiles::dictionaryWithContentsOfFile(const std::string& path) {
  const auto bytes = readRegularFile(root_.onDisk(path), kMaxPropertyListBytes);
  if (!bytes) return std::nullopt;
  try {
    return dictionaryIn(*bytes);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool ApplePropertyListFiles::writeToFile(const PropertyList& dictionary, const std::string& path) {
  try {
    const auto text = readableXml(dictionary);
    if (!text) return false;
    const std::string diskPath = root_.onDisk(path);
    return isTemporary(path) ? writeTemporary(diskPath, *text) : replaceInPlace(diskPath, *text);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

std::string ApplePropertyListFiles::stringByExpandingTildeInPath(std::string_view path) {
  return withHome(path, home_);
}

}  // namespace norvik
