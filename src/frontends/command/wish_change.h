// A wish as a change, and its mistakes as the end of a command: for the commands that set many settings at
// once.
#pragma once

#include <vector>

#include "src/frontends/command/change.h"
#include "src/frontends/shared/edits/edits.h"

namespace norvik::command {

// The change that makes the edits. It opens the lock only where a setting of the administrator is among them.
ChangeRequest changeRequestFor(const Context& context, const std::vector<Edit>& edits,
                               BehindBoxes behindBoxes);

// Ends a command whose wish cannot be: every mistake is shown, and a wrong line counts for more than a wrong
// value. There has to be a mistake.
ExitStatus refuse(const Context& context, const std::vector<ChangeError>& errors);

}  // namespace norvik::command
