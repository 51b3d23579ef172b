// Looks settings up in the list that the interface description gives.
#include "src/frontends/shared/edits/edited_pane.h"

#include <algorithm>

namespace norvik {

EditedPane::EditedPane(NVKServerPrefs& pane, const InterfaceDescription& interface)
    : pane_(pane), interface_(interface), settings_(paneSettings(interface, pane)) {}

void EditedPane::update() {
  settings_ = paneSettings(interface_, pane_);
}

PaneSetting* EditedPane::find(std::string_view name) {
  const auto found = std::ranges::find(settings_, name, &PaneSetting::name);
  return found != settings_.end() ? &*found : nullptr;
}

PaneSetting* EditedPane::settingOf(std::string_view outlet) {
  for (PaneSetting& setting : settings_) {
    if (std::ranges::count(setting.controls(), outlet, &Control::name) > 0) return &setting;
  }
  return nullptr;
}

std::vector<std::string> EditedPane::settingNames() const {
  std::vector<std::string> names;
  names.reserve(settings_.size());
  for (const PaneSetting& setting : settings_) names.push_back(setting.name());
  return names;
}

void EditedPane::click(Control& control) {
  pane_.buttonClicked(control);
  pane_.onStateTimer();
}

}  // namespace norvik
