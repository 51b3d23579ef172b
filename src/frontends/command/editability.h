// Why a control cannot be worked, found out from the pane itself: which boxes would have to stand otherwise
// for it to become enabled. No rule stands here; the pane's enabling pass is asked.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "src/frontends/command/session.h"

namespace norvik::command {

// A box and how it would have to stand.
struct NeededSwitch {
  std::string name;  // of the setting
  bool on = false;
};

// The fewest switches, two at most, that would enable a control: none where it is enabled. Nothing where no
// switches do, as while the pane is locked. Leaves the controls as they were.
std::optional<std::vector<NeededSwitch>> switchesToEnable(Session& session, const Control& control);

// "nvk.enabled=on and nvk.port.custom=on".
std::string switchesInWords(const std::vector<NeededSwitch>& switches);

struct Editability {
  bool editable = false;
  std::string remark;  // why not, or under which conditions; may be empty where it is editable
};

// Whether the setting can be given another value by name. A box that the description says it requires does
// not count, as setting the value turns that on.
Editability editabilityOf(Session& session, PaneSetting& setting);

// Whether the setting can be given this value by name.
Editability editabilityOf(Session& session, PaneSetting& setting, int64_t value);

}  // namespace norvik::command
