// What Foundation knows of the system and the user.
#import "src/adapters/apple/foundation.h"

#include "src/adapters/apple/home.h"
#include "src/adapters/apple/system_version.h"

namespace norvik {

std::optional<std::array<int32_t, 3>> processInfoVersion() {
  const apple::Pool pool;
  NSProcessInfo* info = [NSProcessInfo processInfo];
  if (![info respondsToSelector:@selector(operatingSystemVersion)]) return std::nullopt;
  const NSOperatingSystemVersion version = [info operatingSystemVersion];
  return std::array{static_cast<int32_t>(version.majorVersion), static_cast<int32_t>(version.minorVersion),
                    static_cast<int32_t>(version.patchVersion)};
}

std::string homeFolder() {
  const apple::Pool pool;
  return apple::utf8([@"~" stringByExpandingTildeInPath]);
}

}  // namespace norvik
