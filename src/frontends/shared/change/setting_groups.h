// The groups of settings that Apply saves: the one list from which everything about a group is found. Reads
// the pane; changes nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/stores/settings.h"

namespace norvik {

enum class Group { user, server, limit, notifications };

struct SettingGroup {
  Group group;
  const char* name;                         // for a person: "server settings"
  SettingsTable (*settings)();              // empty for the limit, which is no row of a table
  bool (NVKServerPrefs::*changed)() const;  // the pane's own test
};

// The name of the open files limit, which is no setting of the description: in reports, and for
// SettingsChange::takeOver and takeBack.
inline constexpr const char* kOpenFilesLimitName = "open files limit";
inline constexpr std::string_view kOpenFilesLimitLabel = english("Open files limit");

// In the order in which reports name them.
const std::vector<SettingGroup>& settingGroups();
const SettingGroup& groupOf(Group group);

// Whether Apply would save the group. Nothing of the administrator's while locked. The server's settings are
// saved together with a limit.
bool wouldSave(const NVKServerPrefs& pane, Group group);

// Every row that a file or a tool keeps, in the order of the groups.
const std::vector<const Setting*>& storedRows();

// A limit that is not fully set is none, as the pane takes it once it knows the kernel's values.
NVKServerLimit wholeLimit(const NVKServerLimit& limit);
bool sameLimit(const NVKServerLimit& one, const NVKServerLimit& other);
// One number of a limit as its field shows it: "256", or "default" for none.
std::string limitPart(int32_t part);
// "256 and 512", or "default" for none.
std::string limitText(const NVKServerLimit& limit);

}  // namespace norvik
