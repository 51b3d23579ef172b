// The text in which the pane shows a service's address, for every front end that passes the address on.
#pragma once

#include <optional>
#include <string>

namespace norvik {

// The address alone, which follows its sentence after a blank line; nothing where nobody can connect.
std::optional<std::string> addressIn(const std::string& text);

}  // namespace norvik
