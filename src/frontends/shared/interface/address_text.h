// The text in which the pane tells a service's address, for every host that hands the address on.
#pragma once

#include <optional>
#include <string>

namespace norvik {

// The address alone, which stands below its sentence behind a blank line; nothing where nobody can connect.
std::optional<std::string> addressIn(const std::string& text);

}  // namespace norvik
