// Whether what was applied is in the files. The pane launches its tools and does not wait for them, so it
// does not know when one fails afterwards.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/command/change_transaction.h"

namespace norvik::command {

// The values of the controls when Apply was pressed.
struct Expected {
  std::map<std::string, int64_t> values;  // by the settings' names
  NVKServerLimit limit;
};
Expected expectedOf(Session& session);

// What the report calls changed and the files do not hold: names of settings, and the open files limit.
// To be called when the tools have ended and no session is open. Changes nothing.
std::vector<std::string> notSaved(const Context& context, const Expected& expected,
                                  const ChangeReport& report);

}  // namespace norvik::command
