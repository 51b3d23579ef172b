// A pane that was just opened, and a person's hand on it: open the lock, work a control, press a button.
// There is at most one session at a time, as there is one main pane.
#pragma once

#include <string_view>
#include <vector>

#include "context.h"
#include "pane/pane.h"
#include "pane_setting.h"
#include "witness.h"

namespace norvik {

class Session {
 public:
  // Creates the pane over the context's computer and awakes it. Borrows everything.
  Session(const Context& context, AlertPanels& alerts, Drawing& drawing, Conduct conduct);
  // Closes the lock and gives up the pane.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  NVKServerPrefs& pane() { return pane_; }
  std::vector<PaneSetting>& settings() { return settings_; }
  const Deeds& deeds() const { return witness_.deeds(); }

  // The setting of that name, or the one that a control belongs to; null where there is none.
  PaneSetting* find(std::string_view name);
  PaneSetting* settingOf(std::string_view outlet);
  std::vector<std::string> settingNames() const;

  // Clicks the lock where it is closed; whether it is open then.
  bool unlock();
  // Sends the control's action and lets the state timer tick once, so that every text and every enabled
  // control follows.
  void click(Control& control);

 private:
  Witness witness_;
  NVKServerPrefs pane_;
  std::vector<PaneSetting> settings_;
};

}  // namespace norvik
