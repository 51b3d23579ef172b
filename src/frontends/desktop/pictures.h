// Pictures of every page for documents and for looking at: a PNG a page in both lock states.
#pragma once

#include <QString>

#include "src/frontends/desktop/settings_window.h"

namespace norvik::desktop {

// Writes the pictures into the folder, which is made where it is missing. False, with the path in `failed`,
// where one could not be written. Leaves the pane unlocked.
bool writePictures(NVKServerPrefs& pane, SettingsWindow& window, const QString& folder, QString& failed);

}  // namespace norvik::desktop
