// The operations that a scenario can call by name.
#pragma once

#include <span>
#include <string_view>

#include "src/frontends/scenario/commands.h"

namespace norvik::scenario {

// Rows of the same form as commands: each takes the operation's arguments, calls it and prints its result.
std::span<const CommandRow> operations();

}  // namespace norvik::scenario
