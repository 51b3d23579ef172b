// Connects orders to the server with the window: the question before those that end connections, the progress
// while the pane waits, what came of them, and where the server uses other values than those that are stored.
#pragma once

#include <QObject>
#include <QTimer>

#include "src/frontends/desktop/window_changes.h"
#include "src/frontends/shared/server/server_order.h"
#include "src/frontends/shared/server/server_progress.h"

namespace norvik::desktop {

class WindowServer : public QObject {
 public:
  // Borrows everything; `server` is copied. The window is filled.
  WindowServer(SettingsWindow& window, WindowChanges& changes, SettingsChange& change, OrderedServer server,
               AlertPanels& panels, const Busy& busy);
  ~WindowServer() override;

  // Looks at what is in force, and says where it is not what is stored. Asks the computer; not for every
  // tick.
  void lookAtForce();

  // Carries an order out without a question, and says what came of it.
  OrderReport carryOutNow(ServerOrder order);

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

  SettingsWindow& window_;
  WindowChanges& changes_;
  SettingsChange& change_;
  OrderedServer server_;
  AlertPanels& panels_;
  const Busy& busy_;
  ServerProgressMeter meter_;
  int32_t pid_ = -1;  // of the server, as it was looked at
  std::string said_;  // about what is in force; once is enough
  QTimer again_;      // somebody else may have it taken up meanwhile
};

}  // namespace norvik::desktop
