// The colour of the dot before the server's state: one for each of running, stopped and on the way from one
// to the other, legible on light and on dark windows. Reads the pane; changes nothing.
#pragma once

#include "pane/pane.h"

namespace norvik {

Color stateColor(const NVKServerPrefs& pane);

}  // namespace norvik
