// The pane's commands around the transaction, and its messages.
#include "src/frontends/prefpane/pane_changes.h"

#include <algorithm>
#include <utility>

#include "src/frontends/prefpane/panels.h"
#include "src/frontends/shared/edits/pending_edits.h"

namespace norvik::prefpane {

namespace {

// Seconds after the last event of a file, so that a save in several steps is looked at once.
constexpr double kSettling = 0.15;

}  // namespace

PaneChanges::PaneChanges(MainView& view, NVKServerPrefs& pane, SettingsChange& change, AlertPanels& panels)
    : view_(view),
      pane_(pane),
      change_(change),
      decisions_(panels),
      files_(change, view.interface()),
      settled_([this] { lookAtFiles(); }) {
  view_.setCommand(pane_.ib_button_Apply, [this] { apply(); });
  view_.setCommand(pane_.ib_button_Auth, [this] { pressLock(); });
  view_.showChanges = [this] { showPendingChanges(); };
  view_.refreshed = [this] { showPending(); };
  view_.messages().acted = [this](MessageSubject subject, MessageAction action) { act(subject, action); };
  view_.messages().closed = [this](MessageSubject subject) {
    if (subject == MessageSubject::files) files_.close();
  };
  showFindings();
  showPending();
}

PaneChanges::~PaneChanges() {
  view_.showChanges = nullptr;
  view_.refreshed = nullptr;
  view_.messages().acted = nullptr;
  view_.messages().closed = nullptr;
}

void PaneChanges::act(MessageSubject subject, MessageAction action) {
  switch (action) {
    case MessageAction::retry:
      if (const auto again = retry_) again();
      break;
    case MessageAction::showDetails:
      showDetails(view_.messages().message(subject));
      break;
    case MessageAction::showSetting:
      view_.showSetting(outlet_);
      break;
    case MessageAction::chooseValues:
      chooseValues();
      break;
    case MessageAction::restoreCopy:
      restoreCopy();
      break;
    case MessageAction::keep:
    case MessageAction::revert:
      if (onTrial) onTrial(action);
      break;
    case MessageAction::takeUp:
      if (takeUp) takeUp();
      break;
  }
}

// ---- What came of something

void PaneChanges::say(const WindowMessage& message, const std::string& outlet, std::function<void()> retry) {
  outlet_ = outlet;
  retry_ = std::move(retry);
  view_.messages().show(MessageSubject::outcome, withLabels(message, view_.interface()));
}

void PaneChanges::say(const ChangeReport& report, const WindowMessage& message, std::function<void()> retry) {
  if (!report.error.outlet.empty()) view_.showSetting(report.error.outlet);
  view_.messages().clear(MessageSubject::others);
  showFindings();
  if (changed) changed();
  say(message, report.error.outlet, std::move(retry));
  view_.refresh();
}

void PaneChanges::showFindings() {
  const auto message = files_.update();
  if (message && message->sentence != view_.messages().message(MessageSubject::files).sentence)
    view_.messages().show(MessageSubject::files, *message);
}

// ---- Apply and its list

void PaneChanges::apply() {
  const auto findings = change_.check();
  const WindowMessage refused = refusedMessage(findings);
  if (!refused.isEmpty()) {
    const std::string outlet = std::ranges::find_if(findings, &ValueFinding::blocks)->outlet;
    view_.showSetting(outlet);
    return say(refused, outlet, nullptr);
  }
  const ChangeReport report = change_.apply(decisions_);
  say(report, appliedMessage(report), [this] { applyAgain(); });
}

// What is saved already only has to be taken up.
void PaneChanges::applyAgain() {
  if (change_.pending().empty() && takeUp) return takeUp();
  apply();
}

void PaneChanges::showPendingChanges() {
  const ChangesChoice choice = prefpane::showChanges(
      {[this] { return change_.preview(); },
       [this](const std::string& setting) { change_.takeBack(setting); }, [this] { change_.takeBackAll(); }});
  view_.refresh();
  if (choice.kind == ChangesChoice::apply) apply();
  if (choice.kind == ChangesChoice::goToSetting) view_.showSetting(choice.outlet);
}

void PaneChanges::showPending() {
  // While nothing can be applied, nothing is counted; the pane says so four times a second anyway.
  view_.showPending(pane_.ib_button_Apply.isEnabled() ? change_.pending() : std::vector<SettingChange>());
}

// ---- The lock

// Locking may apply, by a question of the pane's own.
void PaneChanges::pressLock() {
  const bool wasOpen = pane_.authorized();
  const ChangeReport report = change_.around([this] { pane_.buttonClicked(pane_.ib_button_Auth); });
  if (wasOpen && (report.applied || report.error))
    return say(report, appliedMessage(report), [this] { applyAgain(); });
  if (wasOpen) return;
  if (!pane_.authorized()) return say(unlockDeniedMessage(change_.refusal()), {}, [this] { pressLock(); });
  view_.messages().clear(MessageSubject::outcome);
  change_.takeOver();  // an open lock shows more than a closed one
}

bool PaneChanges::unlocked() {
  if (!pane_.authorized()) {
    pressLock();
    view_.refresh();
  }
  return pane_.authorized();
}

// ---- Others

void PaneChanges::filesChanged() {
  settled_.start(kSettling);
}

// While the server starts or stops, the pane must not be refreshed.
void PaneChanges::lookAtFiles() {
  if (pane_.isServerChanging()) return filesChanged();
  const ForeignChanges foreign = change_.foreignChanges();
  if (!foreign.any()) return;
  if (foreign.collisions.empty()) change_.takeOver();
  showFindings();
  if (changed) changed();
  const bool damaged = std::ranges::any_of(change_.findings(), &FileFinding::damaged);
  view_.messages().show(MessageSubject::others, damaged ? WindowMessage() : foreignMessage(foreign));
  view_.refresh();
}

// Asked now; otherwise at Apply.
void PaneChanges::chooseValues() {
  if (!change_.agree(decisions_)) return;
  view_.messages().clear(MessageSubject::others);
  showFindings();
  if (changed) changed();
  view_.refresh();
}

void PaneChanges::restoreCopy() {
  const auto file = restorableFile(change_);
  if (!file || (needsRights(*file) && !unlocked())) return;
  const ChangeReport report = change_.restore(*file);
  say(report, restoredMessage(report, *file), [this] { restoreCopy(); });
}

// ---- A trial

TrialReturn PaneChanges::takeBack(const Trial& trial, OrderedServer& server, Platform& computer) {
  if (needsRights(trial, view_.interface()) && !unlocked()) return returnWithoutRights();
  EditedPane edited(pane_, view_.interface());
  const std::vector<Edit> edits = pendingEdits(edited, change_.pending());
  change_.takeBackAll();
  NobodyDecides nobody;
  server.recording.isUnattended = true;
  TrialReturn result = retriedReturn([&] { return takeBackTrial(trial, server, change_, computer, nobody); });
  server.recording.isUnattended = false;
  // An edit that somebody else's change makes impossible is named like what stays.
  if (const ChangeError lost = makePending(edited, edits, result.notes))
    result.notes.push_back(lost.sentence);
  showFindings();
  if (changed) changed();
  view_.refresh();
  return result;
}

// ---- Leaving

// Nobody sees the view now; it keeps the message until it is shown again.
void PaneChanges::leave(const std::function<void()>& call) {
  const ChangeReport report = change_.around(call);
  if (report.applied || report.error) say(report, appliedMessage(report), [this] { applyAgain(); });
  view_.refresh();
}

}  // namespace norvik::prefpane
