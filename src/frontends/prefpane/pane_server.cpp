// The two buttons of the server's page, and the message about what is in force.
#include "src/frontends/prefpane/pane_server.h"

#include <utility>

#include "src/frontends/prefpane/input.h"

namespace norvik::prefpane {

namespace {
constexpr double kLookAgain = 3;  // seconds
}  // namespace

PaneServer::PaneServer(MainView& view, PaneChanges& changes, SettingsChange& change, OrderedServer server,
                       AlertPanels& panels)
    : view_(view),
      changes_(changes),
      change_(change),
      server_(std::move(server)),
      panels_(panels),
      again_([this] { lookAtForce(); }) {
  for (const Control* button :
       {&server_.pane.ib_admin_button_svrStart, &server_.pane.ib_admin_button_svrRestart})
    view_.setCommand(*button, [this, button] { press(*button); });
  view_.serverTextChanged = [this] { showProgress(); };
  changes_.changed = [this] { lookAtForce(); };
  changes_.takeUp = [this] { takeUpStored(); };
}

PaneServer::~PaneServer() {
  view_.serverTextChanged = nullptr;
  changes_.changed = nullptr;
  changes_.takeUp = nullptr;
}

void PaneServer::press(const Control& button) {
  if (const auto order = orderOf(server_.pane, button)) give(*order);
}

// What was clicked on the greyed buttons until now is no order.
void PaneServer::give(ServerOrder order) {
  if (!isAgreed(order, panels_)) return;
  const OrderReport report = carryOut(order, server_);
  dropInput();
  showForce(report.inForce);
  changes_.say(orderMessage(order, report), report.change.error.outlet, [this, order] { give(order); });
  view_.refresh();
}

void PaneServer::takeUpStored() {
  if (!changes_.unlocked()) return;
  const OrderReport report = takeUp(change_, server_);
  showForce(report.inForce);
  changes_.say(takenUpMessage(report), report.change.error.outlet, [this] { takeUpStored(); });
}

// While a start or stop is under way, each dot of the state label is a second of it. The server may also come
// and go without the pane.
void PaneServer::showProgress() {
  if (const auto progress = meter_.read(server_.pane)) {
    view_.messages().showProgress(progress->waitingFor, progress->done, progress->total);
  } else if (server_.pane.m_serverPid != pid_) {
    again_.start(0);
  }
  if (stateChanged) stateChanged();
}

void PaneServer::lookAtForce() {
  showForce(serverInForce(server_.pane, server_.interface, server_.services.ports));
}

void PaneServer::showForce(const ServerInForce& inForce) {
  pid_ = server_.pane.m_serverPid;
  const bool isInstalled = !installationError(server_.services.files);
  for (const Control* control : serversOwn(server_.pane)) view_.setOffered(*control, isInstalled);
  const WindowMessage message = inForceMessage(inForce, server_.services.files);
  if (std::exchange(said_, message.sentence) != message.sentence)
    view_.messages().show(MessageSubject::inForce, message);
  if (!message.isEmpty()) again_.start(kLookAgain);
  if (looked) looked(inForce);
}

}  // namespace norvik::prefpane
