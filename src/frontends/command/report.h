// The outcome of a change, as text or as JSON.
#pragma once

#include "src/frontends/command/change.h"

namespace norvik::command {

// Writes the outcome, as what would happen where `dryRun`; returns its exit status.
ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun);

}  // namespace norvik::command
