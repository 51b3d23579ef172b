// The system version: the first three numbers of the kernel's release.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "src/server/mac/platform/system_version.h"

namespace norvik {

class LinuxSystemVersion : public SystemVersion {
 public:
  OSErr Gestalt(OSType selector, int32_t& response) override;
};

// Major, minor and bug-fix version of a release such as "6.1.0-18-amd64": 6, 1, 0. Missing numbers are 0;
// nothing if it does not begin with a number.
std::optional<std::array<int32_t, 3>> releaseNumbers(std::string_view release);

}  // namespace norvik
