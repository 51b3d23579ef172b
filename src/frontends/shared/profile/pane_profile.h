// What a profile of a computer says: the values of a pane's settings that mean something on another computer.
// Reads controls; changes nothing.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "src/frontends/shared/change/pane_setting.h"

namespace norvik {

struct PaneProfile {
  std::vector<std::pair<std::string, SettingValue>> values;  // for profileText
  // Settings without a value of their own, which are left out, and why: "it follows the server's settings".
  std::vector<std::pair<std::string, std::string>> leftOut;
};

// Of these settings of the pane, in their order; where `changedOnly`, of those that are not the default.
PaneProfile profileOf(const NVKServerPrefs& pane, const std::vector<const PaneSetting*>& settings,
                      bool changedOnly);

}  // namespace norvik
