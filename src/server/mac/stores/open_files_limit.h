// The open files limit: what the kernel allows now and what the launch daemon's file sets for the next start.
#pragma once

#include <cstdint>

namespace norvik {

struct NVKServerLimit {
  int32_t hard = 0;
  int32_t soft = 0;
};

// What the adjust button can do.
inline constexpr int32_t kLimitUnknown = 0;  // nothing: the kernel's values are not known
inline constexpr int32_t kLimitAdjust = 1;   // raise the file's limits to the kernel's values
inline constexpr int32_t kLimitReset = 2;    // remove the file's limits, which are high enough
inline constexpr int32_t kLimitRevert = 3;   // take back a change that is not saved yet

struct NVKServerLimits {
  NVKServerLimit system;   // kern.maxfiles and kern.maxfilesperproc; 0 unknown
  NVKServerLimit launchd;  // of the file, as shown and edited; 0 in both for no line
  NVKServerLimit backup;   // of the file, as last loaded
  int32_t action = kLimitUnknown;
};

}  // namespace norvik
