// The outcome of a change, as text or as JSON.
#pragma once

#include <iosfwd>
#include <vector>

#include "src/frontends/command/change.h"

namespace norvik::command {

// The settings with their values before and after, and why.
void writeChanges(std::ostream& out, const std::vector<SettingChange>& changes);

// Writes the outcome, as what would happen where `dryRun`; returns its exit status.
ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun);

}  // namespace norvik::command
