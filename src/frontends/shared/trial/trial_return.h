// A trial taken back, as an ordinary change: what is still as the trial made it gets its old value, and what
// somebody else has changed since is named and stays.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/edits/edited_pane.h"
#include "src/frontends/shared/history/change_records.h"
#include "src/frontends/shared/server/server_order.h"

namespace norvik {

// Whether the changes may end the connection of the person who makes them, so that a trial is worth offering:
// ports, the switches of the services, and whether several users may connect.
bool mayEndConnections(const NVKServerPrefs& pane, const std::vector<SettingChange>& changes);

struct TrialReturn {
  ChangeReport report;
  std::vector<std::string> notes;  // a sentence for each setting that stays
};

// Takes the settings back. Nothing else may be pending on the pane, as it would be applied too, and its lock
// has to be open if a setting of the administrator is among them. Waits for the lock for changes and for
// tools, as SettingsChange::apply does. `computer` is the one below the recording.
TrialReturn takeBackSettings(const std::vector<RecordedSetting>& settings, EditedPane& edited,
                             SettingsChange& change, Platform& computer,
                             const InterfaceDescription& interface, ChangeDecisions& person);

}  // namespace norvik
