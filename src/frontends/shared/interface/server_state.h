// The server's state as the front ends show it. Reads the pane; changes nothing.
#pragma once

#include "src/server/mac/pane/pane.h"

namespace norvik {

// From the moment that a start or stop begins until the refresh that follows it.
bool isServerChanging(const NVKServerPrefs& pane);

// The colour of the dot before the state: one each for running, stopped and changing, clear on light and on
// dark windows.
Color stateColor(const NVKServerPrefs& pane);

}  // namespace norvik
