// Settings files as the stand-ins read them: with the defaults of the program that writes them, and as a line
// for a log.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "sandbox/root.h"
#include "src/server/mac/platform/property_list.h"

namespace norvik::sandbox {

struct Setting {
  enum class Kind { boolean, integer };
  const char* key;
  Kind kind;
  int32_t byDefault;
};

// The dictionary in a file of the sandbox's computer; an empty one when none can be read.
PropertyList readSettings(const Root& root, std::string_view path);

// "KEY=VALUE KEY=VALUE ...", with the default where a key is missing.
std::string describeSettings(const PropertyList& list, std::span<const Setting> settings);

}  // namespace norvik::sandbox
