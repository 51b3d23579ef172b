// Bundles as folders on the disk: which one a program is in, and what its Contents say. Reads files; keeps
// nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/processes.h"

namespace norvik {

// The innermost folder NAME.app above an executable whose Contents have an Info.plist or a PkgInfo; empty if
// there is none. Paths are the disk's.
std::string applicationAbove(std::string_view executable);

// Its Info dictionary; nothing if it has none.
std::optional<PropertyList> infoDictionary(const std::string& bundle);

// The two codes of Contents/PkgInfo, which has eight bytes such as "APPLnvka"; both 0 if it does not.
struct PackageCodes {
  OSType type = 0;
  OSType creator = 0;
};
PackageCodes packageCodes(const std::string& bundle);

}  // namespace norvik
