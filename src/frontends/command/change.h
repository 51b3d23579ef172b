// A change from beginning to end, as every command that applies something makes it: nobody else changes
// anything meanwhile; it is previewed, so that nothing is begun that cannot be finished; the controls are
// edited; and the shared transaction applies and reads back.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/command/session.h"
#include "src/frontends/shared/change/settings_change.h"

namespace norvik::command {

struct MadeChange;

// What a command does with the controls of a pane.
struct ChangeRequest {
  bool requiresUnlock = true;       // the lock has to be opened first
  bool previewsWhileLocked = true;  // does not depend on what the pane reads only while the lock is open
  // Edits the controls. Notes are for the person, whether it succeeds or not.
  std::function<ChangeError(Session&, std::vector<std::string>& notes)> edit;
  std::vector<std::string> requested;          // settings that the person named
  std::map<std::string, std::string> reasons;  // why a setting is changed that the person did not name
  // Called with what is about to be put into force, if anything is; a failure ends the change there.
  std::function<ChangeError(const std::vector<RecordedSetting>&)> beforeApply = {};
  // Called after that, whatever came of it.
  std::function<void(MadeChange&)> afterApply = {};
};

struct Outcome;

// A change that was applied, while its pane is still open and unlocked. Nobody holds the lock for changes.
struct MadeChange {
  Session& session;
  SettingsChange& change;
  ChangeDecisions& decisions;
  Outcome& outcome;
};

struct Outcome {
  ChangeReport report;
  std::optional<Preview> preview;  // of a dry run that would apply something
  std::vector<std::string> notes;
  std::vector<Question> questions;
  std::vector<std::string> pending;  // settings that are still not saved
};

// Makes the change and writes the outcome; where `dryRun`, only the outcome that it would have. Returns the
// program's exit status.
//
// Waits for somebody else's change, and holds the computer's lock from then on until its own tools have
// ended. Nothing is touched before all of it has been previewed on a pane whose effects are withheld. A
// question that nobody can answer ends it there, whether it comes up while editing or only after saving. A
// dry run holds no lock.
ExitStatus change(const Context& context, const ChangeRequest& request, bool dryRun);
// The same without writing anything.
Outcome makeChange(const Context& context, const ChangeRequest& request);
// The outcome that the change would have. Holds no lock and touches nothing.
Outcome foresee(const Context& context, const ChangeRequest& request);

// What the transaction needs to know of a command's context.
ChangeOptions changeOptions(const Context& context);
// Adds what a later step did to what earlier ones did; the error is the later one's.
void addReport(const ChangeReport& later, ChangeReport& report);
// The failure of a command that waited for the lock in vain.
ChangeError lockIsTaken();

}  // namespace norvik::command
