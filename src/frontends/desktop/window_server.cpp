// The two buttons of the server's page, and the line about what is in force.
#include "src/frontends/desktop/window_server.h"

#include <utility>

#include "src/frontends/shared/interface/window_messages.h"

namespace norvik::desktop {

namespace {
constexpr std::chrono::seconds kLookAgain{3};
// After an edit: the message names what is typed, too.
constexpr std::chrono::milliseconds kAfterEdit{100};

// The buttons that order the server.
std::array<const Control*, 2> orderButtons(const NVKServerPrefs& pane) {
  return {&pane.ib_admin_button_svrStart, &pane.ib_admin_button_svrRestart};
}

}  // namespace

WindowServer::WindowServer(SettingsWindow& window, WindowChanges& changes, SettingsChange& change,
                           OrderedServer server, AlertPanels& panels, const Busy& busy)
    : window_(window),
      changes_(changes),
      change_(change),
      server_(std::move(server)),
      panels_(panels),
      busy_(busy) {
  for (const Control* button : orderButtons(server_.pane))
    window_.setCommand(*button, [this, button] { press(*button); });
  window_.serverTextChanged = [this] { showProgress(); };
  changes_.changed = [this] { lookAtForce(); };
  changes_.edited = [this] {
    if (!said_.empty()) again_.start(kAfterEdit);
  };
  changes_.takeUp = [this] { takeUpStored(); };
  again_.setSingleShot(true);
  connect(&again_, &QTimer::timeout, this, [this] { lookAtForce(); });
  lookAtForce();
}

WindowServer::~WindowServer() {
  window_.serverTextChanged = nullptr;
  changes_.changed = nullptr;
  changes_.edited = nullptr;
  changes_.takeUp = nullptr;
}

void WindowServer::press(const Control& button) {
  if (const auto order = orderOf(server_.pane, button)) give(*order);
}

void WindowServer::give(ServerOrder order) {
  if (isAgreed(order, panels_)) carryOutNow(order);
}

OrderReport WindowServer::carryOutNow(ServerOrder order) {
  OrderReport report = carryOut(order, server_);
  changes_.say(orderMessage(order, report), report.change.error.outlet, [this, order] { give(order); });
  showForce(report.inForce);
  window_.refresh();
  return report;
}

void WindowServer::takeUpStored() {
  if (!changes_.unlocked()) return;
  const OrderReport report = takeUp(change_, server_);
  changes_.say(takenUpMessage(report), report.change.error.outlet, [this] { takeUpStored(); });
  showForce(report.inForce);
}

// While a start or stop is under way, each dot of the state label is a second of it. The server may also come
// and go without the window.
void WindowServer::showProgress() {
  if (const auto progress = meter_.read(server_.pane)) {
    window_.messages()
        .line(MessageSubject::outcome)
        .showProgress(text(progress->waitingFor), progress->done, progress->total);
  } else if (server_.pane.m_serverPid != pid_) {
    again_.start(0);
  }
  if (stateChanged) stateChanged();
}

void WindowServer::lookAtForce() {
  if (busy_.isBusy()) return again_.start(kLookAgain);
  showForce(serverInForce(server_.pane, server_.interface, server_.services.ports));
}

void WindowServer::showForce(const ServerInForce& inForce) {
  pid_ = server_.pane.m_serverPid;
  const bool isInstalled = !installationError(server_.services.files);
  for (const Control* control : serversOwn(server_.pane)) window_.setOffered(*control, isInstalled);
  const WindowMessage message =
      changes_.storedIsKnown() ? inForceMessage(inForce, server_.services.files) : WindowMessage();
  if (std::exchange(said_, message.sentence) != message.sentence)
    window_.messages().line(MessageSubject::inForce).showMessage(message);
  if (!message.isEmpty()) again_.start(kLookAgain);
  if (looked) looked(inForce);
}

}  // namespace norvik::desktop
