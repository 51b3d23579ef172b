// Bytes and lengths, never C strings: a text may have a zero byte.
#include "src/adapters/apple/core_text.h"

#include <array>

namespace norvik {

namespace {

constexpr std::size_t kLongestPath = 4096;

}  // namespace

Owned<CFStringRef> coreText(std::string_view utf8) {
  return Owned<CFStringRef>(::CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(utf8.data()),
                                                      static_cast<CFIndex>(utf8.size()),
                                                      kCFStringEncodingUTF8, static_cast<Boolean>(false)));
}

std::string utf8(CFStringRef text) {
  const CFRange whole{0, ::CFStringGetLength(text)};
  const auto no = static_cast<Boolean>(false);
  CFIndex size = 0;
  ::CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', no, nullptr, 0, &size);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', no, reinterpret_cast<UInt8*>(bytes.data()),
                     size, &size);
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

std::string fileSystemPath(CFURLRef address) {
  std::array<UInt8, kLongestPath> path{};
  const Boolean found = ::CFURLGetFileSystemRepresentation(address, static_cast<Boolean>(true), path.data(),
                                                           static_cast<CFIndex>(path.size()));
  return found ? reinterpret_cast<const char*>(path.data()) : "";
}

}  // namespace norvik
