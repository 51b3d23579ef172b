// Changes and stops on trial in the window: the line that counts down with its two buttons, and taking the
// change back when the time has passed, when the window closes, and at the next start if the program died.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_back.h"
#include "src/frontends/desktop/window_changes.h"
#include "src/frontends/desktop/window_server.h"
#include "src/frontends/shared/trial/countdown.h"
#include "src/frontends/shared/trial/trial.h"

namespace norvik::desktop {

class WindowTrial : public QObject {
 public:
  struct Parts {
    SettingsWindow& window;
    WindowChanges& changes;
    WindowBack& edits;
    WindowServer& server;
    NVKServerPrefs& pane;
    SettingsChange& change;
    UserState& state;
    Platform& computer;
    AlertPanels& panels;
    const Busy& busy;
  };

  // Borrows everything. The window is filled. `clock` is a time that only grows.
  WindowTrial(const Parts& parts, Countdown::Clock clock);
  ~WindowTrial() override;

  // Puts what is pending into force on trial; says why where it cannot.
  void apply();
  // The same for a stop of the server, after the question before it.
  void stop();
  bool isUnderWay() const { return countdown_.has_value(); }
  void keep();
  // Takes it back now. Whether it is.
  bool revert();

  // What the timer does each second.
  void tick();
  // Takes back what a program has left in force that did not survive its trial; asks for the lock, where that
  // is needed. To be called once the window is shown.
  void takeBackAbandoned();

 private:
  bool isOffered() const;
  void offerEntries();
  void begin();
  void stopCounting();
  void end(const std::vector<std::string>& sentences);
  void leave(const std::string& why);
  bool unlocked();
  TrialReturn takeBack();
  bool takeBackAndSay(std::string_view sentence);
  bool mayLeave();
  void setLockOffered(bool isLockOffered);
  MessageLine& line() { return parts_.window.messages().line(MessageSubject::trial); }

  Parts parts_;
  Countdown::Clock clock_;
  Trials trials_;
  Trial trial_;  // that is under way, or was left
  std::optional<Countdown> countdown_;
  QTimer seconds_;
};

}  // namespace norvik::desktop
