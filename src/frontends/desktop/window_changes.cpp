// The window's commands around the transaction, and its messages.
#include "src/frontends/desktop/window_changes.h"

#include <QApplication>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "src/frontends/desktop/address_label.h"
#include "src/frontends/desktop/changes_dialog.h"
#include "src/frontends/desktop/details_dialog.h"
#include "src/frontends/shared/server/client_services.h"

namespace norvik::desktop {

namespace {

// After the last event of a file, so that a save in several steps is looked at once.
constexpr std::chrono::milliseconds kSettling{150};

// Before a save that is not over is said to be under way.
constexpr std::chrono::milliseconds kSlow{400};

constexpr MessageSubject kSubjects[] = {MessageSubject::files, MessageSubject::inForce,
                                        MessageSubject::others, MessageSubject::outcome};

}  // namespace

WindowChanges::WindowChanges(SettingsWindow& window, NVKServerPrefs& pane, SettingsChange& change,
                             QtAlertPanels& alerts, const Busy& busy)
    : window_(window),
      pane_(pane),
      change_(change),
      alerts_(alerts),
      busy_(busy),
      decisions_(window, alerts),
      files_(change, window.interface()) {
  window_.setCommand(pane_.ib_button_Apply, [this] { apply(); });
  window_.setCommand(pane_.ib_button_Auth, [this] { pressLock(); });
  connect(&window_.changesButton(), &QPushButton::clicked, this, [this] { showChanges(); });
  window_.mayLeave = [this] { return mayLeave(); };
  window_.refreshed = [this] { showPending(); };
  // A person who leaves has answered already, and what is pending still is to be discarded.
  alerts_.answered = [this]() -> std::optional<int> {
    if (isUnattended_) return NSAlertDefaultReturn;
    return window_.isLeaving() ? std::optional(NSAlertAlternateReturn) : std::nullopt;
  };
  settled_.setSingleShot(true);
  connect(&settled_, &QTimer::timeout, this, [this] { lookAtFiles(); });
  slow_.setSingleShot(true);
  connect(&slow_, &QTimer::timeout, this, [this] {
    if (busy_.isBusy())
      line(MessageSubject::outcome).showProgress(translatedText(window_texts::kSaving), 0, 0);
  });
  connectMessages();
  showFindings();
  showPending();
}

WindowChanges::~WindowChanges() {
  window_.mayLeave = nullptr;
  window_.refreshed = nullptr;
  alerts_.answered = nullptr;
}

void WindowChanges::connectMessages() {
  for (const MessageSubject subject : kSubjects)
    line(subject).acted = [this, subject](MessageAction action) { act(subject, action); };
  line(MessageSubject::files).closed = [this] { files_.close(); };
}

void WindowChanges::act(MessageSubject subject, MessageAction action) {
  switch (action) {
    case MessageAction::retry:
      if (const auto again = retry_) again();
      break;
    case MessageAction::showDetails:
      showDetails(&window_, line(subject).message());
      break;
    case MessageAction::showSetting:
      window_.showSetting(outlet_);
      break;
    case MessageAction::chooseValues:
      chooseValues();
      break;
    case MessageAction::restoreCopy:
      restoreCopy();
      break;
    case MessageAction::keep:
    case MessageAction::revert:
      break;  // the trial's own line has these
    case MessageAction::takeUp:
      if (takeUp) takeUp();
      break;
  }
}

// ---- What came of something

void WindowChanges::say(const WindowMessage& message, const std::string& outlet,
                        std::function<void()> retry) {
  outlet_ = outlet;
  retry_ = std::move(retry);
  line(MessageSubject::outcome).showMessage(withLabels(message, window_.interface()));
}

void WindowChanges::say(const ChangeReport& report, const WindowMessage& message,
                        std::function<void()> retry) {
  if (!report.error.outlet.empty()) window_.showSetting(report.error.outlet);
  line(MessageSubject::others).clear();
  collides_ = false;
  showFindings();
  say(message, report.error.outlet, std::move(retry));
  window_.refresh();
  if (changed) changed();
}

void WindowChanges::showFindings() {
  if (const auto message = files_.update()) line(MessageSubject::files).showMessage(*message);
}

// ---- Apply and its list

void WindowChanges::apply() {
  applyAfter([] { return ChangeError(); });
}

std::optional<ChangeReport> WindowChanges::applyAfter(const std::function<ChangeError()>& begin) {
  const auto findings = change_.check();
  const WindowMessage refused = refusedMessage(findings);
  if (!refused.isEmpty()) {
    const std::string outlet = std::ranges::find_if(findings, &ValueFinding::blocks)->outlet;
    window_.showSetting(outlet);
    say(refused, outlet, nullptr);
    return std::nullopt;
  }
  if (const ChangeError error = begin()) {
    say({MessageKind::failure, error.sentence, {}, {}}, error.outlet, nullptr);
    return std::nullopt;
  }
  slow_.start(kSlow);
  const ChangeReport report = change_.apply(decisions_);
  slow_.stop();
  // The damaged file has a message of its own, which stays.
  if (decisions_.takeGivenUp() && report.error.code == FailureCode::damaged) {
    say(report, {MessageKind::note, std::string(window_texts::kNothingSaved), {}, {}}, nullptr);
  } else {
    say(report, appliedMessage(report), [this] { applyAgain(); });
  }
  return report;
}

TrialReturn WindowChanges::takeBack(const Trial& trial, OrderedServer& server, Platform& computer) {
  NobodyDecides nobody;
  slow_.start(kSlow);
  isUnattended_ = true;
  TrialReturn result = takeBackTrial(trial, server, change_, computer, nobody);
  isUnattended_ = false;
  slow_.stop();
  line(MessageSubject::outcome).clear();
  showFindings();
  window_.refresh();
  if (changed) changed();
  return result;
}

// What is saved already only has to be taken up.
void WindowChanges::applyAgain() {
  if (change_.pending().empty() && takeUp) return takeUp();
  apply();
}

void WindowChanges::showChanges() {
  ChangesDialog list(&window_, {[this] { return change_.preview(); },
                                [this](const std::string& setting) { change_.takeBack(setting); },
                                [this] { change_.takeBackAll(); }, isTrialOffered, copyCommand});
  const int choice = list.exec();
  window_.refresh();
  if (choice == ChangesDialog::kApply) apply();
  if (choice == ChangesDialog::kApplyOnTrial && applyOnTrial) applyOnTrial();
  if (choice == ChangesDialog::kGoToSetting) window_.showSetting(list.outlet());
}

// An address with a port that cannot be is not offered for copying.
void WindowChanges::showAddresses() {
  for (const ClientService& service : kClientServices) {
    const bool refused = window_.isRefused(pane_.*service.field);
    window_.addressLabel(pane_.*service.address).setCopyable(!refused);
  }
}

void WindowChanges::showPending() {
  showAddresses();
  std::vector<std::size_t> byPage(window_.pages().size());
  // While nothing can be applied, nothing is counted; the pane says so four times a second anyway.
  const auto changes = pane_.ib_button_Apply.isEnabled() ? change_.pending() : std::vector<SettingChange>();
  for (const SettingChange& change : changes) {
    if (const auto page = window_.pageOf(change.outlet)) ++byPage[*page];
  }
  window_.showPending(changes.size(), byPage);
  if (counted) counted(changes);
  const std::string lines = changeLines(changes, changes.size());
  if (std::exchange(pending_, lines) != lines && edited) edited();
}

// ---- The lock

// Locking may apply, by a question of the pane's own.
void WindowChanges::pressLock() {
  const bool wasOpen = pane_.authorized();
  const ChangeReport report = change_.around([this] { pane_.buttonClicked(pane_.ib_button_Auth); });
  if (wasOpen && (report.applied || report.error)) {
    return say(report, appliedMessage(report), [this] { applyAgain(); });
  }
  if (wasOpen) return;
  if (!pane_.authorized()) return say(unlockDeniedMessage(change_.refusal()), {}, [this] { pressLock(); });
  line(MessageSubject::outcome).clear();
  change_.takeOver();  // an open lock shows more than a closed one
}

bool WindowChanges::storedIsKnown() const {
  return !collides_ && std::ranges::none_of(change_.findings(), [](const FileFinding& finding) {
    return finding.damaged && finding.group == Group::server;
  });
}

bool WindowChanges::unlocked() {
  if (!pane_.authorized()) {
    pressLock();
    window_.refresh();
  }
  return pane_.authorized();
}

// ---- Others

void WindowChanges::filesChanged() {
  settled_.start(kSettling);
}

void WindowChanges::lookAtFiles() {
  if (busy_.isBusy() || QApplication::activeModalWidget() != nullptr) return settled_.start(kSettling);
  const ForeignChanges foreign = change_.foreignChanges();
  if (!foreign.any()) return;
  collides_ = !foreign.collisions.empty();
  if (!collides_) change_.takeOver();
  showFindings();
  const auto& findings = change_.findings();
  const bool damaged = std::ranges::any_of(findings, &FileFinding::damaged);
  line(MessageSubject::others).showMessage(damaged ? WindowMessage() : foreignMessage(foreign));
  window_.refresh();
  if (changed) changed();
}

// Asked now; otherwise at Apply.
void WindowChanges::chooseValues() {
  if (!change_.agree(decisions_)) return;
  collides_ = false;
  line(MessageSubject::others).clear();
  showFindings();
  window_.refresh();
  if (changed) changed();
}

void WindowChanges::restoreCopy() {
  const auto file = restorableFile(change_);
  if (!file || (needsRights(*file) && !unlocked())) return;
  const ChangeReport report = change_.restore(*file);
  say(report, restoredMessage(report, *file), [this] { restoreCopy(); });
}

// ---- Leaving

bool WindowChanges::mayLeave() {
  const auto changes = change_.pending();
  return changes.empty() || leaveWith(decisions_.decideLeaving(changes));
}

bool WindowChanges::leaveWith(DialogDecisions::Leave answer) {
  switch (answer) {
    case DialogDecisions::Leave::apply:
      apply();
      return change_.pending().empty();
    case DialogDecisions::Leave::discard:
      change_.takeBackAll();
      return true;
    case DialogDecisions::Leave::stay:
      break;
  }
  return false;
}

}  // namespace norvik::desktop
