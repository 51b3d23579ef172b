// Gathers the settings page by page; radio buttons with one name become one setting.
#include "src/frontends/shared/interface/setting_description.h"

#include <algorithm>

namespace norvik {

namespace {

void gather(const TabDescription& tab, const ControlDescription& control,
            std::vector<SettingDescription>& settings) {
  if (control.setting.empty() || control.hidden) return;
  const auto named = [&](const SettingDescription& setting) { return setting.name == control.setting; };
  const auto known = std::ranges::find_if(settings, named);
  if (known != settings.end()) {
    known->controls.push_back(&control);
  } else {
    settings.push_back({control.setting, pageName(tab), {&control}});
  }
}

}  // namespace

PageName pageName(const TabDescription& tab) {
  const std::size_t colon = tab.label.find(':');
  if (colon == std::string::npos) return {"", tab.label};
  return {tab.label.substr(0, colon), tab.label.substr(colon + 1)};
}

std::vector<SettingDescription> settingsOf(const InterfaceDescription& interface) {
  std::vector<SettingDescription> settings;
  for (const TabDescription& tab : interface.tabs) {
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& control : row.controls) gather(tab, control, settings);
      }
    }
  }
  return settings;
}

std::string labelOf(const SettingDescription& setting, const InterfaceDescription& interface) {
  const ControlDescription& first = setting.first();
  const ControlDescription* box = setting.isChoice() ? interface.find(first.requiresOutlet) : nullptr;
  return box != nullptr ? box->label : first.label;
}

}  // namespace norvik
