// Three selectors of the successor; all of Gestalt's where there is only that.
#include "src/adapters/apple/system_version.h"

#include <CoreFoundation/CoreFoundation.h>

#include "src/adapters/apple/system_call.h"

namespace norvik {

namespace {

constexpr OSType kParts[] = {fourCharCode("sys1"), fourCharCode("sys2"), fourCharCode("sys3")};

OSErr classicGestalt(OSType selector, int32_t& response) {
  auto* call = systemCall<OSErr(OSType, SInt32*)>("Gestalt");
  if (call == nullptr) return gestaltUndefSelectorErr;
  SInt32 value = 0;
  const OSErr error = call(selector, &value);
  if (error == noErr) response = static_cast<int32_t>(value);
  return error;
}

}  // namespace

OSErr AppleSystemVersion::Gestalt(OSType selector, int32_t& response) {
  const auto version = processInfoVersion();
  if (!version) return classicGestalt(selector, response);
  for (std::size_t part = 0; part < version->size(); ++part) {
    if (selector != kParts[part]) continue;
    response = (*version)[part];
    return noErr;
  }
  return gestaltUndefSelectorErr;
}

}  // namespace norvik
