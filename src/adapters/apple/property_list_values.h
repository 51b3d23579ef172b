// Property lists of the platform as values, and back. Every kind of value and every number survives.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>

#include "src/adapters/apple/handle.h"
#include "src/server/mac/platform/property_list.h"

namespace norvik {

// The value of a property list; nothing where it holds what no value can: an object of another kind, or more
// levels than kMaxPropertyListDepth.
std::optional<PropertyList> valueOf(CFTypeRef list);

// The property list of a value; none where it holds what the platform cannot, such as bytes that are no text.
Owned<CFTypeRef> coreList(const PropertyList& value);

// The property list that the bytes hold, in any of the platform's formats; none if they hold none.
Owned<CFPropertyListRef> decodedList(std::string_view bytes);

}  // namespace norvik
