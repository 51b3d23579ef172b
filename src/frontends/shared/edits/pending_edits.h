// Edits that a window makes for a person, all together or not at all: to the defaults, from a profile, from
// the history. What is entered is pending afterwards, and Apply does the rest.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/edits/edits.h"

namespace norvik {

// Makes the edits in the controls, as a person does, also those behind a box that is off. Where one of them
// cannot be made, every control holds what it held before, and the error says why. `notes` as in applyEdits.
ChangeError makePending(EditedPane& edited, const std::vector<Edit>& edits, std::vector<std::string>& notes);

// What is pending, as the edits that enter it again.
std::vector<Edit> pendingEdits(EditedPane& edited, const std::vector<SettingChange>& pending);

// The edits that give settings their defaults, `defaults` by the settings' names.
std::vector<Edit> defaultsOf(const std::vector<const PaneSetting*>& settings,
                             const std::map<std::string, int64_t>& defaults);
// The same for many, of which some have no default of their own while others have theirs: those are left
// out. Asks a shadow of a pane, as wishOf does.
std::vector<Edit> defaultsOf(Platform& computer, const InterfaceDescription& interface,
                             const std::vector<std::string>& names);

// The edits without those that hold already and, while the pane is locked, without the administrator's.
std::vector<Edit> possibleNow(EditedPane& edited, const std::vector<Edit>& edits);

// What the edits would change of what the controls hold, for a list that a person reads.
std::vector<SettingChange> changesBy(EditedPane& edited, const InterfaceDescription& interface,
                                     const std::vector<Edit>& edits);
// Whether one of them changes a setting that the closed lock keeps.
bool needsLock(EditedPane& edited, const std::vector<Edit>& edits);

}  // namespace norvik
