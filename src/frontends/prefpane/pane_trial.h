// Takes back what was on trial when its program ended, once the pane is shown, and says so above the pages.
// On the Mac nothing is kept for the user, so nothing can be left and this does nothing. A plain C++ header;
// knows no class of the toolkit. Main thread only.
#pragma once

#include <memory>

#include "src/adapters/services/user_state.h"
#include "src/frontends/prefpane/pane_server.h"

namespace norvik::prefpane {

class PaneTrial {
 public:
  // Borrows everything; `state` may be null. `computer` is the one below the recording. Does not look yet.
  PaneTrial(MainView& view, PaneChanges& changes, PaneServer& server, UserState* state, Platform& computer);
  ~PaneTrial();
  PaneTrial(const PaneTrial&) = delete;
  PaneTrial& operator=(const PaneTrial&) = delete;

  // Looks once for a trial that was left, a moment after the pane is seen for the first time: the host's
  // window is there then. May ask for the lock.
  void setSeen(bool isSeen);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace norvik::prefpane
