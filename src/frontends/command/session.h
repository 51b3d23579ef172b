// A pane that was just opened, and what a person does with it: open the lock, edit a control, press a button.
// There is at most one session at a time, as there is one main pane.
#pragma once

#include <string_view>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/change/recording_platform.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::command {

enum class Opening {
  now,
  later,  // by `open`, which another session may precede
};

class Session {
 public:
  // Creates the pane over the computer, and awakes it where it is opened now. Borrows everything.
  Session(Platform& computer, const InterfaceDescription& interface, AlertPanels& alerts, Drawing& drawing,
          RecordingMode mode, Opening opening = Opening::now);
  // The same over the context's computer.
  Session(const Context& context, AlertPanels& alerts, Drawing& drawing, RecordingMode mode,
          Opening opening = Opening::now)
      : Session(context.computer, context.interface, alerts, drawing, mode, opening) {}
  // Closes the lock and destroys the pane.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Awakes the pane, which loads the files.
  void open();

  NVKServerPrefs& pane() { return pane_; }
  std::vector<PaneSetting>& settings() { return settings_; }
  const Effects& effects() const { return recording_.effects(); }
  RecordingPlatform& recording() { return recording_; }

  // The setting of that name, or the one that a control belongs to; null where there is none.
  PaneSetting* find(std::string_view name);
  PaneSetting* settingOf(std::string_view outlet);
  std::vector<std::string> settingNames() const;

  // Clicks the lock where it is closed; returns whether it is open afterwards.
  bool unlock();
  // Sends the control's action and lets the state timer tick once, so that every text and every enabled
  // control follows.
  void click(Control& control);

 private:
  const InterfaceDescription& interface_;
  RecordingPlatform recording_;
  NVKServerPrefs pane_;
  std::vector<PaneSetting> settings_;
};

// The settings whose pending values differ from the stored ones.
std::vector<std::string> pendingSettings(Session& session);

// The settings that a pane on the context's computer shows, for help and completion. Opens a session of its
// own and changes nothing.
std::vector<SettingDescription> shownSettings(const Context& context);

}  // namespace norvik::command
