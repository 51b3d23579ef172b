// Why a control cannot be edited: which boxes would have to be switched for it to become enabled. Contains no
// rule; the pane's enabling pass is asked.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "src/frontends/shared/edits/edited_pane.h"

namespace norvik {

// A box and the state that it would need.
struct NeededSwitch {
  std::string name;  // of the setting
  bool on = false;
};

// The fewest switches, two at most, that would enable a control: none where it is enabled. Nothing where no
// switches do, as while the pane is locked. Leaves the controls as they were.
std::optional<std::vector<NeededSwitch>> switchesToEnable(EditedPane& edited, const Control& control);

// Whether switching the box would disable the control, which is enabled now. Leaves the controls as they
// were.
bool switchingDisables(EditedPane& edited, Control& box, const Control& control);

// Switches the box for as long as `step` takes, without sending its action, and back.
void whileSwitched(EditedPane& edited, Control& box, const std::function<void()>& step);

// "nvk.enabled=on and nvk.port.custom=on".
std::string switchesInWords(const std::vector<NeededSwitch>& switches);

enum class Obstacle { none, locked, notAvailable, needsSwitches };

struct Editability {
  Obstacle obstacle = Obstacle::none;
  std::string remark;  // names the obstacle, or the conditions where there is none; may then be empty

  bool editable() const { return obstacle == Obstacle::none; }
};

// Whether the setting can be given another value by name. A box that the description says it requires does
// not count, as setting the value turns that on.
Editability editabilityOf(EditedPane& edited, PaneSetting& setting);

// Whether the setting can be given this value by name.
Editability editabilityOf(EditedPane& edited, PaneSetting& setting, int64_t value);

}  // namespace norvik
