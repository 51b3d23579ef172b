// A trial taken back, as an ordinary change: what is still as the trial made it gets its old value, and what
// somebody else has changed since is named and stays.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/edits/edited_pane.h"
#include "src/frontends/shared/history/change_records.h"
#include "src/frontends/shared/server/server_order.h"
#include "src/frontends/shared/trial/trial.h"

namespace norvik {

// Whether the changes may end the connection of the person who makes them, so that a trial is worth offering:
// ports, the switches of the services, and whether several users may connect.
bool mayEndConnections(const NVKServerPrefs& pane, const std::vector<SettingChange>& changes);

struct TrialReturn {
  ChangeReport report;
  std::vector<std::string> notes;  // a sentence for each setting that stays

  // Whether nothing is left to be taken back: the files hold the values of before, even if the server could
  // not be notified, which is then the report's error.
  bool isBack = false;
};

// Who is asked while a trial is taken back, as nobody may be there: nothing is saved where a person would
// have to decide.
class NobodyDecides : public ChangeDecisions {
 public:
  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& /*collisions*/) override {
    return std::nullopt;
  }
  DamagedAnswer decideDamaged(const FileFinding& /*file*/) override { return DamagedAnswer::cancel; }
};

// What comes of it where the lock was not opened: it is not taken back.
TrialReturn returnWithoutRights();
// Calls `takeBack` again while somebody else changes settings, at most three times in all.
TrialReturn retriedReturn(const std::function<TrialReturn()>& takeBack);

// Takes the settings back. Nothing else may be pending on the pane, as it would be applied too, and its lock
// has to be open if a setting of the administrator is among them. Holds the lock for changes from before it
// looks at the files, and waits for it and for tools as SettingsChange::apply does. `computer` is the one
// below the recording.
TrialReturn takeBackSettings(const std::vector<RecordedSetting>& settings, EditedPane& edited,
                             SettingsChange& change, Platform& computer,
                             const InterfaceDescription& interface, ChangeDecisions& person);

// Whether taking the trial back needs the pane's lock open.
bool needsRights(const Trial& trial, const InterfaceDescription& interface);

// The same for all that a trial has put into force, of whatever program: its settings, and the server if it
// was stopped. Blocks for half a minute where the server is started.
TrialReturn takeBackTrial(const Trial& trial, OrderedServer& server, SettingsChange& change,
                          Platform& computer, ChangeDecisions& person);

// What a person reads about a trial that another program had left, and what came of it: first the sentence
// that says it, then what stays, then what to do where it is still in force. `state` says where its file is.
std::vector<std::string> sentencesOf(const Trial& trial, const TrialReturn& back, UserState& state);
// Why it is still in force, and what happens next.
ChangeError notTakenBack(const ChangeError& error, UserState& state);

}  // namespace norvik
