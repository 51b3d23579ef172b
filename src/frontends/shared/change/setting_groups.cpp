// The table of the groups.
#include "src/frontends/shared/change/setting_groups.h"

#include <algorithm>

#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

SettingsTable noSettings() {
  return {};
}

}  // namespace

const std::vector<SettingGroup>& settingGroups() {
  using P = NVKServerPrefs;
  static const std::vector<SettingGroup> groups = {
      {Group::user, english("user settings"), userSettings, &P::userConfigChanged},
      {Group::server, english("server settings"), serverSettings, &P::adminConfigChanged},
      {Group::limit, kOpenFilesLimitName, noSettings, &P::maxFilesChanged},
      {Group::notifications, english("notification settings"), notificationSettings,
       &P::notificationSettingsChanged},
  };
  return groups;
}

const SettingGroup& groupOf(Group group) {
  return *std::ranges::find(settingGroups(), group, &SettingGroup::group);
}

bool wouldSave(const NVKServerPrefs& pane, Group group) {
  // The pane's test of the limit does not ask for the lock.
  return (group == Group::user || pane.authorized()) && (pane.*groupOf(group).changed)();
}

const std::vector<const Setting*>& storedRows() {
  static const std::vector<const Setting*> rows = [] {
    std::vector<const Setting*> all;
    for (const SettingGroup& group : settingGroups()) {
      for (const Setting& row : group.settings()) all.push_back(&row);
    }
    return all;
  }();
  return rows;
}

NVKServerLimit wholeLimit(const NVKServerLimit& limit) {
  return limit.soft > 0 && limit.hard > 0 ? limit : NVKServerLimit{};
}

bool sameLimit(const NVKServerLimit& one, const NVKServerLimit& other) {
  return one.soft == other.soft && one.hard == other.hard;
}

std::string limitPart(int32_t part) {
  return part > 0 ? std::to_string(part) : "default";
}

std::string limitText(const NVKServerLimit& limit) {
  if (limit.soft <= 0) return limitPart(0);
  return limitPart(limit.soft) + " and " + limitPart(limit.hard);
}

}  // namespace norvik
