// A value that cannot be stored elsewhere is left out rather than carried there.
#include "src/frontends/shared/profile/pane_profile.h"

#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

// Empty for a setting whose value can be taken up elsewhere.
std::string whyLeftOut(const NVKServerPrefs& pane, const PaneSetting& setting) {
  const Setting* row = rowOfSetting(pane, setting);
  if (row != nullptr && isFollowing(pane, *row)) return translated("it follows the server's settings");
  // A choice without a value is "none", which a profile can say.
  const bool isNone = setting.description().isChoice() && !setting.value();
  if (isNone || checkedValue(setting.description(), setting.text())) return "";
  return sentence("its value, \"{1}\", cannot be", {setting.text()});
}

}  // namespace

PaneProfile profileOf(const NVKServerPrefs& pane, const std::vector<const PaneSetting*>& settings,
                      bool changedOnly) {
  PaneProfile profile;
  for (const PaneSetting* setting : settings) {
    if (changedOnly && isDefault(*setting, pane)) continue;
    std::string why = whyLeftOut(pane, *setting);
    if (why.empty()) {
      profile.values.emplace_back(setting->name(), setting->typedValue());
    } else {
      profile.leftOut.emplace_back(setting->name(), std::move(why));
    }
  }
  return profile;
}

}  // namespace norvik
