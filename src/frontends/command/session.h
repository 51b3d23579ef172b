// A pane that was just opened, and what a person does with it: open the lock, edit a control, press a button.
// There is at most one session at a time, as there is one main pane.
#pragma once

#include <string_view>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/change/recording_platform.h"
#include "src/frontends/shared/edits/edited_pane.h"
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
  // Its settings by name.
  EditedPane& edited() { return edited_; }
  std::vector<PaneSetting>& settings() { return edited_.settings(); }
  const Effects& effects() const { return recording_.effects(); }
  RecordingPlatform& recording() { return recording_; }

  // As of the edited pane.
  PaneSetting* find(std::string_view name) { return edited_.find(name); }
  std::vector<std::string> settingNames() const { return edited_.settingNames(); }
  void click(Control& control) { edited_.click(control); }

  // Clicks the lock where it is closed; returns whether it is open afterwards.
  bool unlock();

 private:
  RecordingPlatform recording_;
  NVKServerPrefs pane_;
  EditedPane edited_;
};

// The settings whose pending values differ from the stored ones.
std::vector<std::string> pendingSettings(Session& session);

// The settings that a pane on the context's computer shows, for help and completion. Opens a session of its
// own and changes nothing.
std::vector<SettingDescription> shownSettings(const Context& context);

}  // namespace norvik::command
