// A change from beginning to end, as every command that applies something makes it: preview, so that nothing
// is begun that cannot be finished; edit the controls; apply; check that it was saved.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
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
  std::function<Error(Session&, std::vector<std::string>& notes)> edit;
  std::vector<std::string> requested;          // settings that the person named
  std::map<std::string, std::string> reasons;  // why a setting is changed that the person did not name
};

// The one group of settings that has to be known by name.
inline constexpr const char* kOpenFilesLimit = "open files limit";

// A value that a person sees, before and after.
struct Change {
  std::string name;  // of a setting, or the label of a field that only shows something
  std::string from, to;
  nlohmann::ordered_json oldValue, newValue;
  std::string because;  // why it changed where the person did not name it
};

struct Outcome {
  Error error;
  std::vector<std::string> notes;
  std::vector<std::string> warnings;
  std::vector<Change> changes;
  std::vector<Question> questions;
  bool previewed = false;  // nothing of it has happened
  bool applied = false;
  std::vector<std::string> saved;    // groups of settings
  std::vector<std::string> pending;  // settings that are still not saved
  Effects effects;
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
