// By the same reversal as an undo.
#include "src/frontends/shared/trial/trial_return.h"

#include <algorithm>

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/history/reversal.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

// While somebody else changes settings.
constexpr int kMostAttempts = 3;

// Nothing is looked at before the tools of the change have ended, whose program may have been killed
// meanwhile: they keep the lock until then.
class HeldForChange {
 public:
  explicit HeldForChange(SettingsChange& change) : change_(change), isHeld_(change.holdLock()) {}
  ~HeldForChange() {
    if (isHeld_) change_.releaseLock();
  }
  HeldForChange(const HeldForChange&) = delete;
  HeldForChange& operator=(const HeldForChange&) = delete;

  bool isHeld() const { return isHeld_; }

 private:
  SettingsChange& change_;
  bool isHeld_;
};

ChangeReport failed(FailureCode code, const std::string& why) {
  ChangeReport report;
  report.error = failure(code, why);
  return report;
}

bool needsRights(const Reversal& reversal, EditedPane& edited) {
  return reversal.limit || std::ranges::any_of(reversal.edits, [&](const Edit& edit) {
           return edited.find(edit.name)->description().isAdministrators();
         });
}

}  // namespace

bool mayEndConnections(const NVKServerPrefs& pane, const std::vector<SettingChange>& changes) {
  const Control* const controls[] = {&pane.ib_admin_chkbox_nvkEnabled, &pane.ib_admin_chkbox_nvkPort,
                                     &pane.ib_admin_edbox_nvkPort,     &pane.ib_admin_chkbox_rdpEnabled,
                                     &pane.ib_admin_chkbox_rdpPort,    &pane.ib_admin_edbox_rdpPort,
                                     &pane.ib_admin_chkbox_multiUser};
  return std::ranges::any_of(changes, [&](const SettingChange& change) {
    return std::ranges::count(controls, change.outlet, &Control::name) > 0;
  });
}

TrialReturn returnWithoutRights() {
  return {
      failed(FailureCode::notAllowed, translated("This needs administrator rights, which were not granted.")),
      {},
      false};
}

TrialReturn retriedReturn(const std::function<TrialReturn()>& takeBack) {
  TrialReturn result = takeBack();
  for (int attempt = 1; attempt < kMostAttempts; ++attempt) {
    if (result.report.error.code != FailureCode::tryAgain) break;
    result = takeBack();
  }
  return result;
}

TrialReturn takeBackSettings(const std::vector<RecordedSetting>& settings, EditedPane& edited,
                             SettingsChange& change, Platform& computer,
                             const InterfaceDescription& interface, ChangeDecisions& person) {
  const HeldForChange held(change);
  if (!held.isHeld()) {
    return {
        failed(FailureCode::tryAgain, translated("Another program is changing the settings.")), {}, false};
  }
  change.takeOver();
  const Reversal reversal = reversalOf(computer, interface, settings, ChangedAgain::leftAlone);
  edited.pane().updateGui(false, false);  // a shadow has used what the panes of a process share
  TrialReturn result{{}, reversal.notes, false};
  if (!reversal.errors.empty()) {
    result.report.error = reversal.errors.front();
  } else if (needsRights(reversal, edited) && !edited.pane().authorized()) {
    result.report = returnWithoutRights().report;
  } else {
    result.report.error = applyReversal(edited, reversal, result.notes);
    if (result.report.ok() && !reversal.empty()) result.report = change.apply(person);
  }
  result.isBack = result.report.ok() || result.report.error.code == FailureCode::server;
  return result;
}

bool needsRights(const Trial& trial, const InterfaceDescription& interface) {
  const auto known = settingsOf(interface);
  return trial.stopsServer == StopsServer::yes ||
         std::ranges::any_of(trial.settings, [&](const RecordedSetting& setting) {
           const auto found = std::ranges::find(known, setting.name, &SettingDescription::name);
           return found == known.end() || found->isAdministrators();
         });
}

TrialReturn takeBackTrial(const Trial& trial, OrderedServer& server, SettingsChange& change,
                          Platform& computer, ChangeDecisions& person) {
  EditedPane edited(server.pane, server.interface);
  TrialReturn result = takeBackSettings(trial.settings, edited, change, computer, server.interface, person);
  if (!result.isBack || trial.stopsServer == StopsServer::no) return result;
  // A server that runs without one of its ports is back all the same, and it is said.
  const OrderReport started = carryOut(ServerOrder::start, server);
  if (!started.ok() && started.after != -1) {
    result.notes.push_back(started.change.error.sentence);
  } else {
    result.report.error = started.change.error;
    result.isBack = started.ok();
  }
  return result;
}

ChangeError notTakenBack(const ChangeError& error, UserState& state) {
  ChangeError result = error;
  result.sentence = sentence("The change on trial could not be taken back: {1}", {error.sentence});
  result.advice = sentence(
      "It is taken back at the next start of norvikctl, the window or the pane in System Preferences. To keep it, remove {1}.",
      {state.placeOf(kTrialFile)});
  return result;
}

std::vector<std::string> sentencesOf(const Trial& trial, const TrialReturn& back, UserState& state) {
  std::vector<std::string> names;
  for (const RecordedSetting& setting : trial.settings) names.push_back(setting.name);
  if (trial.stopsServer == StopsServer::yes) names.push_back(translated("the stop of the server"));
  const std::string what = listInWords(names, "and");
  const bool isBack = back.isBack;
  std::vector<std::string> sentences{
      isBack ? sentence("A change was on trial when its program ended, and was taken back: {1}.", {what})
             : sentence("A change was on trial when its program ended, and is still in force: {1}.", {what})};
  sentences.insert(sentences.end(), back.notes.begin(), back.notes.end());
  if (isBack && !back.report.ok()) sentences.push_back(back.report.error.sentence);
  if (isBack) return sentences;
  const ChangeError why = notTakenBack(back.report.error, state);
  sentences.push_back(why.sentence);
  sentences.push_back(why.advice);
  return sentences;
}

}  // namespace norvik
