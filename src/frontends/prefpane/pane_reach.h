// Shows in the line beside the lock what a ReachWatch finds, and opens the ladder. Knows no toolkit.
#pragma once

#include "src/frontends/prefpane/main_view.h"
#include "src/frontends/prefpane/pane_server.h"
#include "src/frontends/shared/reach/reach_watch.h"

namespace norvik::prefpane {

class PaneReach {
 public:
  // Borrows everything.
  PaneReach(MainView& view, PaneServer& server, const NVKServerPrefs& pane, const ComputerServices& services,
            RunInBackground background);
  ~PaneReach();
  PaneReach(const PaneReach&) = delete;
  PaneReach& operator=(const PaneReach&) = delete;

  // While the host shows another pane, nobody looks.
  void setSeen(bool isSeen) { watch_.setSeen(isSeen); }

 private:
  void showLine();

  MainView& view_;
  PaneServer& server_;
  const NVKServerPrefs& pane_;
  ReachWatch watch_;
};

}  // namespace norvik::prefpane
