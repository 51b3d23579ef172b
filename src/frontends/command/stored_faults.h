// What is wrong with what is stored, as every command that reads or changes settings says before anything
// else: the pane itself takes the defaults without a word.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/command/typed_file.h"

namespace norvik::command {

// What is wrong with the settings files of the context's computer, damaged files first. Opens no session and
// changes nothing.
StoredFaults storedFaults(const Context& context);

// What is wrong with a file that was read from the path that a person types, as server settings. A file that
// is missing is damaged too. Of the computer, nothing is looked at.
StoredFaults faultsOfFile(const Context& context, const std::string& path, TypedFile typed);

// A warning for each, on a line of its own.
void writeWarnings(std::ostream& err, const StoredFaults& faults);

}  // namespace norvik::command
