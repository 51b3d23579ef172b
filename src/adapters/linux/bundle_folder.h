// Bundles as folders on the disk: which one a program lives in, and what its Contents tell of it. Reads
// files; keeps nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/processes.h"

namespace norvik {

// The innermost folder NAME.app above an executable that has Contents with an Info.plist or a PkgInfo; empty
// where there is none. Paths are the disk's.
std::string applicationAbove(std::string_view executable);

// Its Info dictionary; nothing where it has none.
std::optional<PropertyList> infoDictionary(const std::string& bundle);

// The two codes of Contents/PkgInfo, which holds eight bytes such as "APPLnvka"; both 0 where it does not.
struct PackageCodes {
  OSType type = 0;
  OSType creator = 0;
};
PackageCodes packageCodes(const std::string& bundle);

}  // namespace norvik
