// Leaves out what would be saved without a change of its value.
#include "src/frontends/shared/history/change_records.h"

#include <algorithm>

#include "src/frontends/shared/change/setting_groups.h"

namespace norvik {

std::vector<RecordedSetting> recordedOf(const NVKServerPrefs& pane,
                                        const std::vector<SettingChange>& changes) {
  const Control* const limits[] = {&pane.ib_admin_edbox_maxFSoft, &pane.ib_admin_edbox_maxFHard};
  std::vector<RecordedSetting> settings;
  for (const SettingChange& change : changes) {
    const bool isLimit = std::ranges::count(limits, change.outlet, &Control::name) > 0;
    if (!isLimit && change.oldValue != change.newValue)
      settings.push_back({change.name, change.oldValue, change.newValue});
  }
  if (wouldSave(pane, Group::limit)) {
    settings.push_back({kOpenFilesLimitName, limitText(wholeLimit(pane.m_admin_maxFiles.backup)),
                        limitText(wholeLimit(pane.m_admin_maxFiles.launchd))});
  }
  return settings;
}

}  // namespace norvik
