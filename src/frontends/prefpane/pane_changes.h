// Connects the change transaction with the view: Apply and its result, the list of pending changes, what
// others change meanwhile, damaged files, the lock, and leaving. Decides nothing itself: what is saved is the
// transaction's. Knows no toolkit.
#pragma once

#include <functional>
#include <string>

#include "src/frontends/prefpane/main_view.h"
#include "src/frontends/prefpane/pane_decisions.h"
#include "src/frontends/prefpane/run_loop_sources.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/interface/files_message.h"
#include "src/frontends/shared/trial/trial_return.h"

namespace norvik::prefpane {

class PaneChanges {
 public:
  // Borrows everything. The transaction has looked and loaded.
  PaneChanges(MainView& view, NVKServerPrefs& pane, SettingsChange& change, AlertPanels& panels);
  ~PaneChanges();
  PaneChanges(const PaneChanges&) = delete;
  PaneChanges& operator=(const PaneChanges&) = delete;

  // What the button does: checks, and then saves or says why not.
  void apply();
  // The list of pending changes.
  void showPendingChanges();
  // One of the settings files may have changed: looks at them a moment later, in which a save is complete.
  void filesChanged();
  // Opens the lock where it is closed. Whether it is open then; if not, it was said.
  bool unlocked();
  // Takes a trial back, with the lock open where that is needed. What is pending is put aside meanwhile, and
  // nobody is asked. `computer` is the one below the recording.
  TrialReturn takeBack(const Trial& trial, OrderedServer& server, Platform& computer);
  // A call of the host in which the pane may apply by its own question. What came of it is shown when the
  // pane is shown next.
  void leave(const std::function<void()>& call);

  // Says what came of something: the setting it is about, if any, and what "Retry" does about it.
  void say(const WindowMessage& message, const std::string& outlet, std::function<void()> retry);

  // Called after each change of the settings files: what is in force may be different now.
  std::function<void()> changed;
  // Has the server take up what is stored.
  std::function<void()> takeUp;
  // A person has pressed "Keep" or "Revert" of a trial.
  std::function<void(MessageAction action)> onTrial;

 private:
  void act(MessageSubject subject, MessageAction action);
  void say(const ChangeReport& report, const WindowMessage& message, std::function<void()> retry);
  void pressLock();
  void showPending();
  void showFindings();
  void lookAtFiles();
  void applyAgain();
  void chooseValues();
  void restoreCopy();

  MainView& view_;
  NVKServerPrefs& pane_;
  SettingsChange& change_;
  PanelDecisions decisions_;
  FilesMessage files_;
  Delay settled_;
  std::function<void()> retry_;
  std::string outlet_;  // of the setting that the outcome is about
};

}  // namespace norvik::prefpane
