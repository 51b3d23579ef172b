// A pane with its settings by name, as the words of a person and profiles mean them: found, edited, clicked.
// Holds no rule, and does not own the pane; a front end makes one over the pane that it shows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/change/pane_setting.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

class EditedPane {
 public:
  // Borrows both. Knows the settings that the pane shows now.
  EditedPane(NVKServerPrefs& pane, const InterfaceDescription& interface);

  // Looks at them again, as once the pane is awake.
  void update();

  NVKServerPrefs& pane() { return pane_; }
  // In the order of the pages.
  std::vector<PaneSetting>& settings() { return settings_; }
  const std::vector<PaneSetting>& settings() const { return settings_; }

  // The setting of that name, or the one that a control belongs to; null where there is none.
  PaneSetting* find(std::string_view name);
  PaneSetting* settingOf(std::string_view outlet);
  std::vector<std::string> settingNames() const;

  // Sends the control's action and lets the state timer tick once, so that every text and every enabled
  // control follows.
  void click(Control& control);

 private:
  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  std::vector<PaneSetting> settings_;
};

}  // namespace norvik
