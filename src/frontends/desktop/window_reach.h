// Shows in the line beside the lock what a ReachWatch finds, and opens the ladder.
#pragma once

#include <QObject>

#include "src/frontends/desktop/reach_dialog.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_server.h"
#include "src/frontends/shared/reach/reach_watch.h"

namespace norvik::desktop {

class WindowReach : public QObject {
 public:
  // Borrows everything. The window is filled.
  WindowReach(SettingsWindow& window, WindowServer& server, const NVKServerPrefs& pane,
              ComputerServices services, RunInBackground background);
  ~WindowReach() override;

 private:
  void show();
  void showLine();
  void showLadder();

  SettingsWindow& window_;
  WindowServer& server_;
  ReachWatch watch_;
  ReachDialog* dialog_ = nullptr;
};

}  // namespace norvik::desktop
