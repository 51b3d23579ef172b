// Reads the release for each request, since requests are rare.
#include "src/adapters/linux/system_version.h"

#include <sys/utsname.h>

#include <charconv>

namespace norvik {

std::optional<std::array<int32_t, 3>> releaseNumbers(std::string_view release) {
  std::array<int32_t, 3> numbers{};
  const char* next = release.data();
  const char* const end = next + release.size();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto [rest, error] = std::from_chars(next, end, numbers[i]);
    if (error != std::errc() || numbers[i] < 0) {
      numbers[i] = 0;
      return i == 0 ? std::nullopt : std::optional(numbers);
    }
    if (rest == end || *rest != '.') break;
    next = rest + 1;
  }
  return numbers;
}

OSErr LinuxSystemVersion::Gestalt(OSType selector, int32_t& response) {
  constexpr std::array<OSType, 3> kSelectors{fourCharCode("sys1"), fourCharCode("sys2"),
                                             fourCharCode("sys3")};
  utsname names{};
  if (::uname(&names) != 0) return gestaltUndefSelectorErr;
  const auto numbers = releaseNumbers(names.release);
  for (std::size_t i = 0; numbers && i < kSelectors.size(); ++i) {
    if (kSelectors[i] != selector) continue;
    response = (*numbers)[i];
    return noErr;
  }
  return gestaltUndefSelectorErr;
}

}  // namespace norvik
