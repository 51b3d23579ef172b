// The server's state as the faces show it. Reads the pane; changes nothing.
#pragma once

#include "src/server/mac/pane/pane.h"

namespace norvik {

// From the moment that a start or stop begins until the refresh that follows it.
bool isServerChanging(const NVKServerPrefs& pane);

// Of the dot before the state: one for each of running, stopped and changing, legible on light and on dark
// windows.
Color stateColor(const NVKServerPrefs& pane);

}  // namespace norvik
