// The settings as rows of the pane's tables, across all groups, with what a person has done to them: edited
// or not, and the state of the controls that hold the edit. Reads and writes controls; knows no file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/frontends/shared/change/pane_setting.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/stores/settings.h"

namespace norvik {

// Whether the pane would save the row's pending value because it differs. Nothing of the administrator's
// while locked, and no image value of a user who follows the server's.
bool isPending(const NVKServerPrefs& pane, const Setting& row);

// What the controls of a row hold.
struct ControlState {
  Control* control;
  int state;
  double value;
  int64_t index;
  std::string text;

  bool operator==(const ControlState&) const = default;
};
std::vector<ControlState> controlStates(NVKServerPrefs& pane, const Setting& row);
void restoreControls(const std::vector<ControlState>& states);
// Gives one control what another one holds.
void restoreState(const Control& from, Control& to);

// The setting of a row that shows its value to a person: the field or the choice, where a box stands before
// it. Null for a row that nobody sees.
const PaneSetting* settingOfRow(const std::vector<PaneSetting>& settings, const NVKServerPrefs& pane,
                                const Setting& row);
// The row that a setting belongs to; null for none.
const Setting* rowOfSetting(const NVKServerPrefs& pane, const PaneSetting& setting);

// Whether the setting has the value that it has where nothing is stored.
bool isDefault(const PaneSetting& setting, const NVKServerPrefs& pane);

// Whether a user who follows the server's image settings sees those in the row's control; the row then has no
// pending value of its own.
bool isFollowing(const NVKServerPrefs& pane, const Setting& row);
// Whether a load leaves the row's control where it is, so that the field tells more than the control.
bool isLeftByLoads(const NVKServerPrefs& pane, const Setting& row);
// The value that a setting has in the files, of a pane that has just loaded them, as PaneSetting has it.
int64_t storedValueOf(const NVKServerPrefs& pane, const PaneSetting& setting);

}  // namespace norvik
