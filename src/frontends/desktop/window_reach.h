// Keeps the line beside the lock true, and opens the ladder: looks when the server, its ports or its settings
// are different from what they were, and when a person asks. Looking takes a connection to the server, so it
// is not done by the clock.
#pragma once

#include <QObject>
#include <string>
#include <vector>

#include "src/frontends/desktop/background_work.h"
#include "src/frontends/desktop/reach_dialog.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_server.h"

namespace norvik::desktop {

class WindowReach : public QObject {
 public:
  // Borrows everything. The window is filled.
  WindowReach(SettingsWindow& window, WindowServer& server, const NVKServerPrefs& pane,
              ComputerServices services, RunInBackground background);
  ~WindowReach() override;

  // Looks, or looks once more after what is under way.
  void look();

 private:
  void follow(const ServerInForce& inForce);
  void showLine();
  void showLadder();

  SettingsWindow& window_;
  WindowServer& server_;
  const NVKServerPrefs& pane_;
  ComputerServices services_;
  RunInBackground background_;
  std::vector<ServiceReach> found_;
  std::string seen_;  // what was in force when somebody looked
  bool isLooking_ = false;
  bool isOutdated_ = false;  // something has changed since the look that is under way began
  ReachDialog* dialog_ = nullptr;
};

}  // namespace norvik::desktop
