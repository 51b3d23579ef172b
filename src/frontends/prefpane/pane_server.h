// Connects orders to the server with the view: the question before those that end connections, the progress
// while the pane waits, what came of them, and where the server uses other values than those that are stored.
// Knows no toolkit.
#pragma once

#include <functional>
#include <string>

#include "src/frontends/prefpane/pane_changes.h"
#include "src/frontends/shared/server/server_order.h"
#include "src/frontends/shared/server/server_progress.h"

namespace norvik::prefpane {

class PaneServer {
 public:
  // Borrows everything; `server` is copied. Does not look yet.
  PaneServer(MainView& view, PaneChanges& changes, SettingsChange& change, OrderedServer server,
             AlertPanels& panels);
  ~PaneServer();
  PaneServer(const PaneServer&) = delete;
  PaneServer& operator=(const PaneServer&) = delete;

  // Looks at what is in force, and says where it is not what is stored. Asks the computer; not for every
  // tick.
  void lookAtForce();

  OrderedServer& ordered() { return server_; }

  // Called after each look, which an order, a save or a change of the server brings about.
  std::function<void(const ServerInForce& inForce)> looked;
  // Called when the text of the server's state has changed.
  std::function<void()> stateChanged;

 private:
  void press(const Control& button);
  void give(ServerOrder order);
  void takeUpStored();
  void showProgress();
  void showForce(const ServerInForce& inForce);

  MainView& view_;
  PaneChanges& changes_;
  SettingsChange& change_;
  OrderedServer server_;
  AlertPanels& panels_;
  ServerProgressMeter meter_;
  int32_t pid_ = -1;  // of the server, as it was looked at
  std::string said_;  // about what is in force; once is enough
  Delay again_;       // somebody else may have it taken up meanwhile
};

}  // namespace norvik::prefpane
