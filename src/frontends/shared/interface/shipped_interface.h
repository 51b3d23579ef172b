// The interface description that is built into the programs, for every front end.
#pragma once

#include <optional>
#include <string>

#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// Nothing, and in `error` what is wrong and where, if the file that was built in is damaged.
std::optional<InterfaceDescription> shippedInterface(std::string& error);

}  // namespace norvik
