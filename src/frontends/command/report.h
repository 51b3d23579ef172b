// The outcome of a change, as text or as JSON.
#pragma once

#include "src/frontends/command/change_transaction.h"

namespace norvik::command {

// Writes the outcome, as what would happen where `dryRun`; returns its exit status.
ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun);

// A command line as it would be typed, words with spaces in quotes.
std::string commandLine(const Launch& launch);

// The launches that changed something, as JSON: an array of arrays of words.
nlohmann::ordered_json commandsJson(const Effects& effects);

}  // namespace norvik::command
