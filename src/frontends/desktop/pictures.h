// Pictures of every page, for documents: one PNG for each page and lock state.
#pragma once

#include <QString>

#include "src/frontends/desktop/settings_window.h"

namespace norvik::desktop {

// Writes the pictures into the folder, which is created if missing. False if one could not be written, with
// its path in `failed`. Leaves the pane unlocked.
bool writePictures(NVKServerPrefs& pane, SettingsWindow& window, const QString& folder, QString& failed);

}  // namespace norvik::desktop
