// Texts of this program as texts of the platform, and back.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <string_view>

#include "src/adapters/apple/handle.h"

namespace norvik {

// A text of the platform from UTF-8, zero bytes included; none for bytes that are no UTF-8.
Owned<CFStringRef> coreText(std::string_view utf8);

// The text in UTF-8. Half of a surrogate pair, which UTF-8 does not have, becomes "?".
std::string utf8(CFStringRef text);

// The path on the disk of a file; empty where the address names none.
std::string fileSystemPath(CFURLRef address);

}  // namespace norvik
