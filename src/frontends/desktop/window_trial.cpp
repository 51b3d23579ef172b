// The countdown is shown each second and said once. The lock stays open meanwhile, as taking back needs it.
#include "src/frontends/desktop/window_trial.h"

#include <QApplication>
#include <utility>

#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/shared/trial/left_trial.h"
#include "src/frontends/shared/trial/trial_texts.h"
#include "src/server/mac/text/join.h"

namespace norvik::desktop {

namespace {

constexpr std::chrono::seconds kEachSecond{1};
}  // namespace

WindowTrial::WindowTrial(const Parts& parts, Countdown::Clock clock)
    : parts_(parts), clock_(std::move(clock)), trials_(parts.state, "window") {
  MoreMenu& menu = parts_.window.moreMenu();
  menu.setEntry(MoreEntry::applyOnTrial, [this] { apply(); });
  menu.setEntry(MoreEntry::stopOnTrial, [this] { stop(); });
  menu.whenOpening([this] { offerEntries(); });
  parts_.changes.applyOnTrial = [this] { apply(); };
  parts_.changes.isTrialOffered = [this] { return isOffered(); };
  line().acted = [this](MessageAction action) {
    if (action == MessageAction::keep) keep();
    if (action == MessageAction::revert) revert();
  };
  parts_.window.mayLeave = [this, others = parts_.window.mayLeave] {
    return mayLeave() && (!others || others());
  };
  seconds_.setInterval(kEachSecond);
  connect(&seconds_, &QTimer::timeout, this, [this] { tick(); });
}

WindowTrial::~WindowTrial() {
  parts_.changes.applyOnTrial = nullptr;
  parts_.changes.isTrialOffered = nullptr;
}

bool WindowTrial::isOffered() const {
  return !isUnderWay() && parts_.pane.authorized() && mayEndConnections(parts_.pane, parts_.change.pending());
}

void WindowTrial::offerEntries() {
  MoreMenu& menu = parts_.window.moreMenu();
  menu.setOffered(MoreEntry::applyOnTrial, isOffered());
  const bool isRunning = parts_.pane.m_serverPid > 0;
  menu.setOffered(MoreEntry::stopOnTrial, !isUnderWay() && parts_.pane.authorized() && isRunning);
}

// ---- Its beginning

void WindowTrial::apply() {
  if (isUnderWay()) return;
  trial_ = {};
  const auto report = parts_.changes.applyAfter([this] {
    trial_.settings = recordedOf(parts_.pane, parts_.change.pending());
    return trials_.begin(trial_.settings, StopsServer::no, kUsualTrial);
  });
  if (!report) return;
  if (report->ok()) return begin();
  if (report->saved.empty()) {
    trials_.end();
  } else {
    takeBackAndSay(trial_texts::kReverted);
  }
}

void WindowTrial::stop() {
  if (isUnderWay() || !isAgreed(ServerOrder::stop, parts_.panels)) return;
  trial_ = {};
  trial_.stopsServer = StopsServer::yes;
  if (const ChangeError error = trials_.begin({}, StopsServer::yes, kUsualTrial))
    return parts_.changes.say({MessageKind::failure, error.sentence, {}, {}}, error.outlet, nullptr);
  if (parts_.server.carryOutNow(ServerOrder::stop).ok()) return begin();
  takeBackAndSay(trial_texts::kReverted);
}

void WindowTrial::begin() {
  countdown_.emplace(clock_, kUsualTrial);
  const auto seconds = static_cast<std::size_t>(kUsualTrial.count());
  line().showLasting({MessageKind::warning,
                      counted(trial_texts::kBegun, seconds),
                      {MessageAction::keep, MessageAction::revert},
                      {}});
  setLockOffered(false);
  seconds_.start();
}

void WindowTrial::setLockOffered(bool isLockOffered) {
  parts_.window.setOffered(parts_.pane.ib_button_Auth, isLockOffered);
}

// ---- Its end

// Whatever a person is asked when the time has passed is closed: the way to this computer comes first.
void WindowTrial::tick() {
  if (!isUnderWay()) return seconds_.stop();
  if (!countdown_->isOver())
    return line().showSilently(
        sentence(trial_texts::kCountdown, {std::to_string(countdown_->left().count())}));
  if (parts_.busy.isBusy()) return;  // until the next second
  if (QWidget* asking = QApplication::activeModalWidget()) {
    asking->close();
    return;
  }
  takeBackAndSay(trial_texts::kLapsed);
}

void WindowTrial::stopCounting() {
  countdown_.reset();
  seconds_.stop();
  setLockOffered(true);
}

void WindowTrial::end(const std::vector<std::string>& sentences) {
  std::vector<std::string> words = sentences;
  if (std::string warning = trials_.end(); !warning.empty()) words.push_back(std::move(warning));
  stopCounting();
  line().showMessage({MessageKind::done, joined(words, " "), {}, {}});
  parts_.window.refresh();
}

// It stays in force, and the next start tries again; a person may before.
void WindowTrial::leave(const std::string& why) {
  trials_.leave();
  stopCounting();
  line().showMessage({MessageKind::failure, why, {MessageAction::revert, MessageAction::keep}, {}});
  parts_.window.refresh();
}

void WindowTrial::keep() {
  if (!isUnderWay()) trials_.abandoned();  // its file is to go
  end({translated(trial_texts::kKept)});
}

bool WindowTrial::revert() {
  if (parts_.busy.isBusy()) return false;
  if (!isUnderWay() && !trials_.abandoned()) {
    line().clear();  // somebody else has taken it back
    return true;
  }
  return takeBackAndSay(trial_texts::kReverted);
}

bool WindowTrial::unlocked() {
  return !needsRights(trial_, parts_.window.interface()) || parts_.changes.unlocked();
}

bool WindowTrial::takeBackAndSay(std::string_view words) {
  const TrialReturn back = takeBack();
  if (!back.isBack) {
    leave(notTakenBack(back.report.error, parts_.state).sentence);
    return false;
  }
  std::vector<std::string> sentences{translated(words)};
  sentences.insert(sentences.end(), back.notes.begin(), back.notes.end());
  if (!back.report.ok()) sentences.push_back(back.report.error.sentence);
  end(sentences);
  return true;
}

// The lock is opened where that is needed. What a person edits meanwhile is put aside, as it would be applied
// too.
TrialReturn WindowTrial::takeBack() {
  if (!unlocked()) return returnWithoutRights();
  const std::vector<Edit> edits = parts_.edits.pendingEdits();
  parts_.change.takeBackAll();
  TrialReturn result = retriedReturn(
      [this] { return parts_.changes.takeBack(trial_, parts_.server.ordered(), parts_.computer); });
  if (!edits.empty()) parts_.edits.enter(edits);
  return result;
}

// ---- A trial that its program did not survive

void WindowTrial::takeBackAbandoned() {
  const WindowMessage message = takeBackLeft(trials_, parts_.state, [this](const Trial& left) {
    trial_ = left;
    return takeBack();
  });
  if (message.isEmpty()) return;
  line().showMessage(message);
  parts_.window.refresh();
}

// ---- Closing the window

bool WindowTrial::mayLeave() {
  if (!isUnderWay()) return true;
  const std::string words = sentence(trial_texts::kLeaveText, {std::to_string(countdown_->left().count())});
  const int answer = parts_.panels.NSRunAlertPanel(
      translated(trial_texts::kLeaveTitle).c_str(), words.c_str(), translated(trial_texts::kKeep).c_str(),
      translated(trial_texts::kRevert).c_str(), window_texts::kCancel.data());
  if (!isUnderWay()) return false;  // the time has passed meanwhile, and something was said
  if (answer == NSAlertDefaultReturn) keep();
  if (answer == NSAlertAlternateReturn) return revert();
  return answer == NSAlertDefaultReturn;
}

}  // namespace norvik::desktop
