// The line follows the server and the watch.
#include "src/frontends/prefpane/pane_reach.h"

#include <utility>

#include "src/frontends/prefpane/panels.h"
#include "src/frontends/shared/interface/server_state.h"

namespace norvik::prefpane {

PaneReach::PaneReach(MainView& view, PaneServer& server, const NVKServerPrefs& pane,
                     const ComputerServices& services, RunInBackground background)
    : view_(view),
      server_(server),
      pane_(pane),
      watch_(pane, view.interface(), services, std::move(background)) {
  watch_.changed = [this] { showLine(); };
  server_.looked = [this](const ServerInForce& inForce) {
    showLine();
    watch_.follow(inForce);
  };
  server_.stateChanged = [this] { showLine(); };
  view_.reachLine().pressed = [this] { showLadder(watch_); };
  showLine();
  server_.lookAtForce();
}

PaneReach::~PaneReach() {
  server_.looked = nullptr;
  server_.stateChanged = nullptr;
  view_.reachLine().pressed = nullptr;
}

void PaneReach::showLine() {
  view_.reachLine().showLine(watch_.line());
  view_.reachLine().showColor(stateColor(pane_));
}

}  // namespace norvik::prefpane
