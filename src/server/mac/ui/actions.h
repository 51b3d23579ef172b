// What clicks do. No action writes a stored value: pending values stay in the controls until they are
// applied.
#pragma once

#include "src/server/mac/pane/pane.h"

namespace norvik::actions {

// Refreshes the view, which is all that an edited value needs. The other actions refresh too, unless they say
// otherwise.
void edit(NVKServerPrefs& pane, Control& sender);

// An image setting of the server: whatever the user's box for following them does.
void changeImageDefaults(NVKServerPrefs& pane, Control& sender);
// The user's image controls take the server's values, or keep their own with each slider on a whole number.
void followImageDefaults(NVKServerPrefs& pane, Control& sender);

// The lock: unlocks, or asks about pending changes and locks. Does not refresh if a person goes on editing.
void clickLock(NVKServerPrefs& pane, Control& sender);
void clickApply(NVKServerPrefs& pane, Control& sender);
// Opens the support page. Does not refresh.
void clickHelp(NVKServerPrefs& pane, Control& sender);

// Starts the server, or stops it while it runs.
void clickStart(NVKServerPrefs& pane, Control& sender);
void clickRestart(NVKServerPrefs& pane, Control& sender);
void clickDisplays(NVKServerPrefs& pane, Control& sender);
void clickAccess(NVKServerPrefs& pane, Control& sender);

// The box for a port of its own: puts the standard port into the field when switched off.
void clickNvkPort(NVKServerPrefs& pane, Control& sender);
void clickRdpPort(NVKServerPrefs& pane, Control& sender);

// The boxes for multi-user mode and for an action on connect.
void clickSessionMode(NVKServerPrefs& pane, Control& sender);
// One of the three radio buttons.
void clickActionOnConnect(NVKServerPrefs& pane, Control& sender);

// These three ask for confirmation.
void chooseDriverMode(NVKServerPrefs& pane, Control& sender);
void clickNoQuartz(NVKServerPrefs& pane, Control& sender);
void clickAdjust(NVKServerPrefs& pane, Control& sender);

}  // namespace norvik::actions
