// What came of a change, told to the person or as JSON.
#pragma once

#include "src/frontends/command/change_transaction.h"

namespace norvik::command {

// Writes the outcome, as what would happen where `dryRun`; the answer is the exit status that it stands for.
ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun);

// A command line as it would be typed, words with spaces in quotes.
std::string commandLine(const Launch& launch);

// The launches that changed something, as JSON: an array of arrays of words.
nlohmann::ordered_json commandsJson(const Effects& effects);

}  // namespace norvik::command
