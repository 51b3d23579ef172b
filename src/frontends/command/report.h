// The outcome of a change, as text or as JSON.
#pragma once

#include <iosfwd>
#include <vector>

#include "src/frontends/command/change.h"

namespace norvik::command {

// The settings with their values before and after, and why.
void writeChanges(std::ostream& out, const std::vector<SettingChange>& changes);

// Writes the outcome as text, as what would happen where `dryRun`; nothing of one that failed beforehand.
void writeOutcome(const Context& context, const Outcome& outcome, bool dryRun);
// Ends the command after that; with JSON, writes the object, with `more` fields. Returns the exit status.
ExitStatus finishChange(const Context& context, const Outcome& outcome, bool dryRun,
                        const nlohmann::ordered_json& more = {});
// Both.
ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun);

}  // namespace norvik::command
