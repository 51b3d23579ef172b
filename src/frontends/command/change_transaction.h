// A change from beginning to end, as every command that applies something makes it: preview, so that nothing
// is begun that cannot be finished; edit the controls; apply; check that it was saved.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

// What a command does with the controls of a pane.
struct ChangeRequest {
  bool requiresUnlock = true;       // the lock has to be opened first
  bool previewsWhileLocked = true;  // does not depend on what the pane reads only while the lock is open
  // Edits the controls. Notes are for the person, whether it succeeds or not.
  std::function<ChangeError(Session&, std::vector<std::string>& notes)> edit;
  std::vector<std::string> requested;          // settings that the person named
  std::map<std::string, std::string> reasons;  // why a setting is changed that the person did not name
};

// The one group of settings that has to be known by name.
inline constexpr const char* kOpenFilesLimit = "open files limit";

struct Outcome {
  ChangeReport report;
  std::vector<std::string> notes;
  std::vector<Question> questions;
  bool wouldApply = false;           // in a preview: what the report says would be saved and run
  std::vector<std::string> pending;  // settings that are still not saved
};

// Makes the change and writes the outcome; where `dryRun`, only the outcome that it would have. Returns the
// program's exit status.
//
// Nothing is touched before all of it has been previewed on a pane whose effects are withheld. A question
// that nobody can answer ends it there, whether it comes up while editing or only after saving.
ExitStatus change(const Context& context, const ChangeRequest& request, bool dryRun);

// The settings whose pending values differ from the stored ones.
std::vector<std::string> pendingSettings(Session& session);

}  // namespace norvik::command
