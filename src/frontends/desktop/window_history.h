// The history in the window: shows it, and makes the old values of a change pending, which the list of
// changes previews and Apply saves.
#pragma once

#include <QObject>

#include "src/adapters/services/user_state.h"
#include "src/frontends/desktop/history_dialog.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_back.h"
#include "src/frontends/desktop/window_changes.h"

namespace norvik::desktop {

class WindowHistory : public QObject {
 public:
  // Borrows everything. The window is filled.
  WindowHistory(SettingsWindow& window, WindowChanges& changes, WindowBack& edits, UserState& state,
                Platform& computer);

  void showHistory();
  // Makes the old values pending and shows the list of changes.
  void undo(const HistoryEntry& entry);

 private:
  HistoryDialog::Chosen look(const HistoryEntry& entry);

  SettingsWindow& window_;
  WindowChanges& changes_;
  WindowBack& edits_;
  UserState& state_;
  Platform& computer_;
};

}  // namespace norvik::desktop
