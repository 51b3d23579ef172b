// The server's status as lines and as JSON, shared by the commands that show it once, after a change, or
// continuously: what the pane shows, and what is in force.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/shared/server/in_force.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::command {

struct StatusLine {
  std::string key;    // "state", "nvk", "rdp" or "lock"
  std::string label;  // for a person
  std::string text;   // one line
};

// State, each service, and the lock. A service has the pane's sentence about its address, except where what
// is in force is seen to differ: then it says that.
std::vector<StatusLine> statusLines(const Context& context, NVKServerPrefs& pane,
                                    const ServerInForce& inForce);

// {"state": ..., "running": ..., "pid": ..., "addresses": {"nvk": {"address": ..., "text": ...}, "rdp": ...},
//  "locked": ..., "inForce": {"nvk": {"typed": ..., "stored": ..., "seen": ..., "ports": ..., "differs": ...,
//  "takenBy": ...}, "rdp": ...}}; what there is not is null. The address is null too where it is not in
//  force.
nlohmann::ordered_json statusJson(NVKServerPrefs& pane, const ServerInForce& inForce);

// Whether having the server take up what is stored would make the service what is stored. Somebody else's
// port cannot be taken up.
bool canBeTakenUp(const ServiceInForce& service);

// For a person who changed nothing, or something else: where what is stored is not in force, and how it comes
// into force. A sentence for each service and each port that somebody else has; none where all is as stored.
std::vector<std::string> notInForce(const Context& context, const NVKServerPrefs& pane);

}  // namespace norvik::command
