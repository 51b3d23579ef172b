// The open files limit is changed through one button, which does the step that is possible: here by the name
// of the step.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/change/failure.h"
#include "src/frontends/shared/edits/edited_pane.h"

namespace norvik {

enum class LimitStep {
  adjust,  // the limits for the next start become the current ones
  reset,   // they become the system's default
};

// Clicks the button, which may ask, where it does the wanted step. The pane's lock has to be open. Notes are
// for the person: nothing was to be done, or it was declined.
ChangeError takeLimitStep(EditedPane& edited, LimitStep wanted, std::vector<std::string>& notes);

}  // namespace norvik
