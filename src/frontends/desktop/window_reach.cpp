// The line, and the ladder while it is open.
#include "src/frontends/desktop/window_reach.h"

#include <utility>

#include "src/frontends/desktop/reach_card.h"
#include "src/frontends/desktop/reach_line.h"

namespace norvik::desktop {

WindowReach::WindowReach(SettingsWindow& window, WindowServer& server, const NVKServerPrefs& pane,
                         ComputerServices services, RunInBackground background)
    : window_(window),
      server_(server),
      watch_(pane, window.interface(), std::move(services), std::move(background)) {
  for (const QPushButton* opens : {&window_.reachLine().button(), &window_.reachCard().button()})
    connect(opens, &QPushButton::clicked, this, [this] { showLadder(); });
  watch_.changed = [this] { show(); };
  server_.looked = [this](const ServerInForce& inForce) {
    showLine();
    watch_.follow(inForce);
  };
  server_.stateChanged = [this] { showLine(); };
  showLine();
  server_.lookAtForce();
}

WindowReach::~WindowReach() {
  server_.looked = nullptr;
  server_.stateChanged = nullptr;
}

void WindowReach::show() {
  showLine();
  if (dialog_ == nullptr) return;
  dialog_->setLooking(watch_.isLooking());
  if (!watch_.isLooking()) dialog_->showServices(watch_.found());
}

void WindowReach::showLine() {
  window_.reachLine().showLine(text(watch_.line()));
  window_.reachCard().showServices(watch_.known());
}

void WindowReach::showLadder() {
  ReachDialog dialog(&window_);
  dialog_ = &dialog;
  dialog.lookAgain = [this] { watch_.look(); };
  dialog.showServices(watch_.found());
  watch_.look();
  dialog.exec();
  dialog_ = nullptr;
}

}  // namespace norvik::desktop
