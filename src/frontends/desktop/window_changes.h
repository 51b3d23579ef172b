// Connects the change transaction with the window: Apply and its result, the list of pending changes, what
// others change meanwhile, damaged files, the lock, and leaving. Decides nothing itself: what is saved is the
// transaction's.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <string>

#include "src/frontends/desktop/decisions.h"
#include "src/frontends/desktop/message_area.h"
#include "src/frontends/desktop/qt_platform.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/interface/files_message.h"
#include "src/frontends/shared/trial/trial_return.h"

namespace norvik::desktop {

class WindowChanges : public QObject {
 public:
  // Borrows everything. The window is filled, and the transaction has looked and loaded.
  WindowChanges(SettingsWindow& window, NVKServerPrefs& pane, SettingsChange& change, QtAlertPanels& alerts,
                const Busy& busy);
  ~WindowChanges() override;

  // What Return and the button do: checks, and then saves or says why not.
  void apply();
  // The same with a step of its own between the check and the saving; nothing is saved where it fails. What
  // came of it was said; nothing where nothing was begun.
  std::optional<ChangeReport> applyAfter(const std::function<ChangeError()>& begin);
  // Takes back what was in force on trial. Nothing else may be pending.
  TrialReturn takeBackTrial(const std::vector<RecordedSetting>& settings, EditedPane& shown,
                            Platform& computer);
  // The list of pending changes.
  void showChanges();
  // One of the settings files may have changed: looks at them when nobody is being asked and nothing is under
  // way.
  void filesChanged();
  // Opens the lock where it is closed. Whether it is open then; if not, it was said.
  bool unlocked();
  // Whether the window may go: asks about everything that is pending.
  bool mayLeave();
  // How many changes are pending.
  std::size_t pendingCount() { return change_.pending().size(); }

  // Whether the values that the window takes for the stored ones are what the server's settings file holds:
  // not while it is damaged, and not while a person has yet to choose between them and what somebody else has
  // stored. Where they are not, nobody should be offered to take them up.
  bool storedIsKnown() const;

  // Says what came of something: the setting it is about, if any, and what "Retry" does about it.
  void say(const WindowMessage& message, const std::string& outlet, std::function<void()> retry);

  // Called after each change of the settings files: what is in force may be different now.
  std::function<void()> changed;
  // Called after each look at what is pending, with what can be taken back.
  std::function<void(const std::vector<SettingChange>& changes)> counted;
  // Called when other changes are pending than before.
  std::function<void()> edited;
  // Puts what is pending into force on trial, and whether that is offered; none where there are no trials.
  std::function<void()> applyOnTrial;
  std::function<bool()> isTrialOffered;
  // Has the server take up what is stored.
  std::function<void()> takeUp;

 private:
  MessageLine& line(MessageSubject subject) { return window_.messages().line(subject); }
  void connectMessages();
  void act(MessageSubject subject, MessageAction action);
  void say(const ChangeReport& report, const WindowMessage& message, std::function<void()> retry);
  void pressLock();
  void showPending();
  void showAddresses();
  void applyAgain();
  void showFindings();
  void lookAtFiles();
  void chooseValues();
  void restoreCopy();
  bool leaveWith(DialogDecisions::Leave answer);

  SettingsWindow& window_;
  NVKServerPrefs& pane_;
  SettingsChange& change_;
  QtAlertPanels& alerts_;
  const Busy& busy_;
  DialogDecisions decisions_;
  FilesMessage files_;
  QTimer settled_;  // a save is several events
  QTimer slow_;     // a save that takes so long that a person should know
  std::function<void()> retry_;
  std::string outlet_;     // of the setting that the outcome is about
  std::string pending_;    // the changes, as they were shown last
  bool collides_ = false;  // somebody else has changed what a person is changing here
};

}  // namespace norvik::desktop
