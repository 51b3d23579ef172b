// The parts of a pane in their order.
#include "src/frontends/prefpane/pane_session.h"

#include <utility>

namespace norvik::prefpane {

namespace {

// Of the pane that owns the state: another one passes the host's calls on to it.
PaneSession* mainSession = nullptr;

ChangeOptions changeOptions(const SessionComputer& computer) {
  ChangeOptions options{computer.records};
  options.portInUse = computer.portInUse;
  options.waitForTools = computer.waitForTools;
  return options;
}

}  // namespace

PaneSession::PaneSession(const SessionComputer& computer, const InterfaceDescription& interface)
    : computer_(computer),
      interface_(interface),
      pane_(interface),
      change_(pane_, computer_.recording, computer_.platform, interface, computer_.services,
              changeOptions(computer_)) {}

PaneSession::~PaneSession() {
  if (mainSession != this) return;
  mainSession = nullptr;
  computer_.drawing = {};
  computer_.runLoop.ticked = nullptr;
}

void* PaneSession::view() {
  if (view_ != nullptr) return view_->view();
  const bool isFirst = __main_pane == nullptr;
  if (isFirst) change_.look();
  pane_.awakeFromNib();
  if (isFirst) change_.loaded();
  view_ = std::make_unique<MainView>(pane_, interface_, computer_.portInUse);
  if (isMain()) beMainPane();
  return view_->view();
}

// Only the pane that holds the state ticks, is drawn at once and saves; the view of another one stays inert.
void PaneSession::beMainPane() {
  mainSession = this;
  changes_ = std::make_unique<PaneChanges>(*view_, pane_, change_, computer_.panels);
  server_ =
      std::make_unique<PaneServer>(*view_, *changes_, change_,
                                   OrderedServer{pane_, computer_.recording, interface_, computer_.services,
                                                 computer_.waitForTools, computer_.pause},
                                   computer_.panels);
  reach_ = std::make_unique<PaneReach>(*view_, *server_, pane_, computer_.services, computer_.background);
  trial_ = std::make_unique<PaneTrial>(*view_, *changes_, *server_, computer_.state, computer_.platform);
  files_ = std::make_unique<SettingsWatch>(computer_.settingsFiles, [this] { filesChanged(); });
  termination_ = std::make_unique<TerminationWatch>([this] { hostEnds(); });
  MainView* view = view_.get();
  computer_.drawing.displayControl = [view](Control& control) { view->display(control); };
  computer_.drawing.displayView = [view](View& drawn) {
    if (drawn.superview() == nullptr) view->displayIfNeeded();
  };
  computer_.runLoop.ticked = [view] { view->ticked(); };
  view->refresh();
}

void PaneSession::willSelect() {
  pane_.willSelect();
  view_->fit();
}

void PaneSession::setSeen(bool seen) {
  if (mainSession == nullptr) return;
  mainSession->view_->messages().setSeen(seen);
  mainSession->reach_->setSeen(seen);
  mainSession->trial_->setSeen(seen);
}

void PaneSession::didSelect() {
  pane_.didSelect();
  setSeen(true);
  view_->takeFocus();
}

// The pane asks by itself what to do with changes, and may apply.
void PaneSession::didUnselect() {
  setSeen(false);
  const auto leave = [this] { pane_.didUnselect(); };
  mainSession != nullptr ? mainSession->changes_->leave(leave) : leave();
}

// A host that is quit does not leave its panes first, and edits would be lost without a word.
void PaneSession::hostEnds() {
  if (!pane_.m_isSelected) return;
  willUnselect();
  didUnselect();
}

void PaneSession::filesChanged() {
  if (changes_ != nullptr) changes_->filesChanged();
}

}  // namespace norvik::prefpane
