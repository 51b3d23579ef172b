// The value that each setting has where nothing is stored, found by opening a pane on a computer without any
// stored settings: the pane's own tables say it.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "src/server/mac/platform/platform.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// By the settings' names; the values as PaneSetting has them. Asks a shadow of a pane on `computer`, so a
// front end whose own pane is awake refreshes it afterwards, as after a preview. Changes nothing.
std::map<std::string, int64_t> defaultValues(Platform& computer, const InterfaceDescription& interface);

}  // namespace norvik
