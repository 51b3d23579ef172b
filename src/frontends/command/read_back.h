// Whether what was applied is in the files. The panel launches its tools and does not wait for them, so one
// that fails afterwards is unknown to it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/command/change_transaction.h"

namespace norvik::command {

// What the controls said as Apply was pressed.
struct Expected {
  std::map<std::string, int64_t> values;  // by the settings' names
  NVKServerLimit limit;
};
Expected expectedOf(Session& session);

// What the outcome counts as changed and the files do not hold: names of settings, and the open files limit.
// To be asked when the tools have ended and no session is open. Changes nothing.
std::vector<std::string> notSaved(const Context& context, const Expected& expected, const Outcome& outcome);

}  // namespace norvik::command
