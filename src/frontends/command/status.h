// The pane's status as lines and as JSON, shared by the commands that show it once, after a change, or
// continuously.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::command {

struct StatusLine {
  std::string key;    // "state", "nvk", "rdp" or "lock"
  std::string label;  // for a person
  std::string text;   // one line
};

// State, the address of each service, and the lock, as the pane shows them now.
std::vector<StatusLine> statusLines(const Context& context, NVKServerPrefs& pane);

// {"state": ..., "running": ..., "pid": ..., "addresses": {"nvk": {"address": ..., "text": ...}, "rdp": ...},
//  "locked": ...}; pid and address are null where there is none.
nlohmann::ordered_json statusJson(NVKServerPrefs& pane);

}  // namespace norvik::command
