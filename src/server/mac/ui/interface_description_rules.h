// What must be true of an interface description beyond the types of its values: which keys suit which kind of
// control, ranges, and names that refer to one another. Used by the reader only; pure computation.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/property_list.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::description_rules {

// Sets `error` to "PATH: MESSAGE" and returns false. An empty path means the description itself.
bool fail(std::string& error, const std::string& path, const std::string& message);

// The path of a part of what is at `path`.
std::string inside(const std::string& path, std::string_view part);

// The kind that a word of the description names, "check box"; nothing for an unknown word.
std::optional<ControlKind> kindOf(std::string_view word);

// Whether one control is consistent: it has the keys that its kind needs and none that mean nothing for it,
// and its range is valid. `record` is the dictionary that the control was read from. Sets `error` if not.
bool checkControl(const PropertyList& record, const ControlDescription& control, const std::string& path,
                  std::string& error);

// Whether the icon's name is one of a file: small letters and hyphens. Sets `error` if not.
bool checkTab(const TabDescription& tab, const std::string& path, std::string& error);

// Whether the controls go together: outlets differ, requirements name check boxes, a preview names a pop-up
// and sliders, and a setting belongs to one control or to radio buttons that differ in their choice. Sets
// `error` if not.
bool checkWhole(const InterfaceDescription& description, std::string& error);

}  // namespace norvik::description_rules
