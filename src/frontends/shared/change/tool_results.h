// What the tools that the pane launched mean for the person: which failed, and which kind of failure that is.
// Knows the tools of the pane's command table, and no computer.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/change/change_report.h"

namespace norvik {

// A command line as it would be typed, words with spaces in quotes.
std::string commandLine(const Launch& launch);

// How a tool failed: "/bin/mv a b failed with exit status 1: ", and its words.
std::string failureInWords(const CommandOutcome& command);

// The launches with what became of each. A tool whose output is read changes nothing and is left out; one
// that the system refused to run has no outcome.
std::vector<CommandOutcome> outcomesOf(const Effects& effects, const std::vector<ToolOutcome>& tools);

// The first thing that went wrong, the gravest kind first: a tool that has not ended, one that was refused,
// one that failed. None where all is well.
ChangeError errorOf(const std::vector<CommandOutcome>& commands);

}  // namespace norvik
