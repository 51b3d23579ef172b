// The system's version. Gestalt is deprecated, and says 10.16 to programs that were built for older systems;
// NSProcessInfo follows it, and is used where the system has it.
#pragma once

#include <array>
#include <optional>

#include "src/server/mac/platform/system_version.h"

namespace norvik {

class AppleSystemVersion : public SystemVersion {
 public:
  OSErr Gestalt(OSType selector, int32_t& response) override;
};

// Major, minor and bug-fix version by NSProcessInfo; nothing on a system whose does not say.
std::optional<std::array<int32_t, 3>> processInfoVersion();

}  // namespace norvik
