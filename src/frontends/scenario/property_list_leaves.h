// Property lists as lines of text, one for each leaf: PATH TYPE VALUE.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/platform/property_list.h"

namespace norvik::scenario {

// The leaves, sorted by their paths as printed; just `dictionary` or `array` for an empty root. The root must
// be one of the two.
std::vector<std::string> leavesOf(const PropertyList& list);

// The list that such lines describe, in any order. Throws Malformed.
PropertyList listOfLeaves(std::string_view body);

}  // namespace norvik::scenario
