// Everything known of a control, as a row: its outlet, when it is enabled, and what a click on it does.
#pragma once

#include <span>
#include <string_view>

#include "src/server/mac/pane/pane.h"

namespace norvik {

// What enabling depends on, asked once for each pass.
enum Condition : unsigned {
  kEnabled = 1u << 0,         // the pane as a whole
  kOwnImage = 1u << 1,        // kEnabled, and the user does not follow the server's image settings
  kUnlocked = 1u << 2,        // kEnabled, and the pane is unlocked
  kMultiUserKnown = 1u << 3,  // the server has a multi-user mode
  kRunning = 1u << 4,         // the daemon, as last shown
  kActs = 1u << 5,            // an action on connect is chosen, or the box is mixed
  kSingleUser = 1u << 6,      // multi-user mode is not chosen
  kNvk = 1u << 7,             // the service's box
  kRdp = 1u << 8,
  kNvkPort = 1u << 9,  // the box for a port of its own, or the box is mixed
  kRdpPort = 1u << 10,
  kLimitKnown = 1u << 11,  // the open files limit can be changed
  kPending = 1u << 12,     // kEnabled, and there is something to apply
};
// Of a control that the enabling pass leaves as it is.
inline constexpr unsigned kNotTouched = 0;

using ControlAction = void (*)(NVKServerPrefs& pane, Control& sender);

struct ControlRow {
  std::string_view outlet;
  Control& (*control)(NVKServerPrefs& pane);  // the member of that name
  unsigned conditions;                        // enabled if all of them hold; kNotTouched for none
  ControlAction action;                       // null for none
};

// One row for each control. The order of the rows is behaviour: the enabling pass works from top to bottom,
// and observers see the controls change in that order.
std::span<const ControlRow> controlTable();

}  // namespace norvik
