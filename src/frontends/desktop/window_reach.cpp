// The pane is asked on the main thread, the network beside it.
#include "src/frontends/desktop/window_reach.h"

#include <memory>
#include <utility>

#include "src/frontends/desktop/reach_card.h"
#include "src/frontends/desktop/reach_line.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::desktop {

WindowReach::WindowReach(SettingsWindow& window, WindowServer& server, const NVKServerPrefs& pane,
                         ComputerServices services, RunInBackground background)
    : window_(window), server_(server), pane_(pane), services_(services), background_(std::move(background)) {
  for (const QPushButton* opens : {&window_.reachLine().button(), &window_.reachCard().button()})
    connect(opens, &QPushButton::clicked, this, [this] { showLadder(); });
  server_.looked = [this](const ServerInForce& inForce) { follow(inForce); };
  server_.stateChanged = [this] { showLine(); };
  showLine();
  server_.lookAtForce();
}

WindowReach::~WindowReach() {
  server_.looked = nullptr;
  server_.stateChanged = nullptr;
}

void WindowReach::follow(const ServerInForce& inForce) {
  std::string now = std::to_string(pane_.m_serverPid);
  for (const ServiceInForce& service : inForce.services) {
    now += " " + std::to_string(static_cast<int>(service.inForce)) + " " +
           (service.stored.isOn ? std::to_string(service.stored.port) : "off");
    for (const uint16_t port : service.ports) now += "," + std::to_string(port);
  }
  showLine();
  if (std::exchange(seen_, now) != now) look();
}

void WindowReach::look() {
  isOutdated_ = isLooking_;
  if (isLooking_) return;
  isLooking_ = true;
  if (dialog_ != nullptr) dialog_->setLooking(true);
  const auto question = std::make_shared<ReachQuestion>(reachQuestion(pane_, window_.interface(), services_));
  const auto answer = std::make_shared<std::vector<ServiceReach>>();
  background_([question, answer, &network = services_.network] { *answer = climb(*question, network); },
              [this, answer] {
                isLooking_ = false;
                found_ = std::move(*answer);
                showLine();
                if (dialog_ != nullptr) dialog_->setLooking(false);
                if (dialog_ != nullptr) dialog_->showServices(found_);
                if (std::exchange(isOutdated_, false)) look();
              });
}

void WindowReach::showLine() {
  const std::string state = pane_.ib_admin_label_svrState.stringValue();
  const bool isKnown = !isLooking_ && !pane_.isServerChanging();
  const auto known = isKnown ? found_ : std::vector<ServiceReach>();
  window_.reachLine().showLine(text(reachLine(state, known)));
  window_.reachCard().showServices(known);
}

void WindowReach::showLadder() {
  ReachDialog dialog(&window_);
  dialog_ = &dialog;
  dialog.lookAgain = [this] { look(); };
  dialog.showServices(found_);
  look();
  dialog.exec();
  dialog_ = nullptr;
}

}  // namespace norvik::desktop
