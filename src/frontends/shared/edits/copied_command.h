// What is pending, as the line of a shell that does the same by norvikctl: for a person who wants to do it on
// another computer, or in a script.
#pragma once

#include <string>

#include "src/frontends/shared/edits/edited_pane.h"

namespace norvik {

// "norvikctl set nvk.port=5000 'notify.repeat=30 minutes' && norvikctl limits adjust"; empty where nothing is
// pending. Every value is written out, those that changed along with others too. A box that a person has left
// off again is off in the line, so norvikctl refuses what depends on it, as it does anywhere.
std::string commandOfPending(EditedPane& edited);

// The word as a POSIX shell reads it back: in quotes where it needs them.
std::string quotedForShell(const std::string& word);

}  // namespace norvik
