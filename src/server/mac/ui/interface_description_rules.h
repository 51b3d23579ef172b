// What must hold of an interface description beyond the types of its values: which keys suit which kind of
// control, ranges, and names that point at one another. Used by the reader alone; pure computation.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/property_list.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::description_rules {

// Sets `error` to "PATH: MESSAGE" and returns false. An empty path stands for the description itself.
bool fail(std::string& error, const std::string& path, const std::string& message);

// The path of a part of what stands at `path`.
std::string inside(const std::string& path, std::string_view part);

// The kind that a word of the description names, "check box"; nothing for an unknown word.
std::optional<ControlKind> kindOf(std::string_view word);

// Whether one control holds together: it has the keys that its kind needs and none that mean nothing for it,
// and its range is one. `record` is the dictionary that the control was read from. Sets `error` where not.
bool checkControl(const PropertyList& record, const ControlDescription& control, const std::string& path,
                  std::string& error);

// Whether the controls go together: outlets differ, requirements name check boxes, and a setting belongs to
// one control or to radio buttons that differ in their choice. Sets `error` where not.
bool checkWhole(const InterfaceDescription& description, std::string& error);

}  // namespace norvik::description_rules
