// The ways back of a row of settings, for every window: to what is stored and to the default, each with the
// value that it leads to and whether it would do anything now. Reads controls; changes nothing.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/change/pane_setting.h"

namespace norvik {

struct WayBack {
  std::string words;       // "Back to the default (4073)", in the person's language
  bool isOffered = false;  // it would change something, and the person may
};

struct WaysBack {
  WayBack stored;
  WayBack standard;
};

// The settings that a person edits together with these, as the box before a field and the field: those of the
// same row of the pane's tables, in the order of the pages.
std::vector<const PaneSetting*> editedTogether(const std::vector<PaneSetting>& settings,
                                               const NVKServerPrefs& pane,
                                               const std::vector<std::string>& names);

// The name of the button that takes back what is pending of the settings with these names, "Port number: back
// to 4073"; empty where nothing is. `pending` is what SettingsChange::pending gives now.
std::string buttonName(const std::vector<PaneSetting>& settings, const NVKServerPrefs& pane,
                       const std::vector<std::string>& names, const std::vector<SettingChange>& pending);

// Of the settings with these names, which share a row of a page, `defaults` being the values by the
// settings' names.
WaysBack waysBack(const std::vector<PaneSetting>& settings, const NVKServerPrefs& pane,
                  const std::vector<std::string>& names, const std::vector<SettingChange>& pending,
                  const std::map<std::string, int64_t>& defaults);

}  // namespace norvik
