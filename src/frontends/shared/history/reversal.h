// How a recorded change is taken back: what is still as it made it gets its old values, as one wish; what was
// changed again since is named and left alone. Looks at the files of now, on a shadow of a pane; changes
// nothing itself.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "src/frontends/shared/edits/edits.h"
#include "src/frontends/shared/edits/limit_step.h"
#include "src/frontends/shared/history/change_records.h"

namespace norvik {

// What becomes of settings that were changed again since.
enum class ChangedAgain { leftAlone, takenBackToo };

struct Reversal {
  std::vector<Edit> edits;          // in the order of the pages
  std::optional<LimitStep> limit;   // what to do to the open files limit
  std::string limitBefore;          // and what it was, as limitText writes it
  std::vector<std::string> notes;   // a sentence for each setting that is left alone
  bool leavesSome = false;          // something was changed again, and is left alone
  std::vector<ChangeError> errors;  // an old value that cannot be given any more; the edits mean nothing then

  bool empty() const { return edits.empty() && !limit; }
};

// A front end whose own pane is awake refreshes it afterwards, as after a preview.
Reversal reversalOf(Platform& computer, const InterfaceDescription& interface,
                    const std::vector<RecordedSetting>& settings, ChangedAgain again);

// Edits the pane as the reversal says; as applyEdits.
ChangeError applyReversal(EditedPane& edited, const Reversal& reversal, std::vector<std::string>& notes);

}  // namespace norvik
