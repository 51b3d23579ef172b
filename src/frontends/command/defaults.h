// The value that each setting has where nothing is stored, found by opening a pane on a computer without any
// stored settings: the pane's own tables say it.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "src/frontends/command/context.h"

namespace norvik::command {

// By the settings' names; the values as PaneSetting has them. To be called while no session is open. Changes
// nothing.
std::map<std::string, int64_t> defaultValues(const Context& context);

}  // namespace norvik::command
