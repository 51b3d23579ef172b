// What a change would do, and what came of it, as values: front ends show them as text, as JSON or as lists.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/adapters/services/launched_tools.h"
#include "src/frontends/shared/change/failure.h"
#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/change/recording_platform.h"

namespace norvik {

// One setting, before and after.
struct SettingChange {
  std::string name;    // "nvk.port"; the label of a field that only shows something
  std::string label;   // "Port"
  std::string page;    // "Norvik Clients"
  std::string outlet;  // the control that a person is led to
  std::string from, to;
  SettingValue oldValue, newValue;
  std::string because;  // why it changes where the person did not ask for it; may be empty
};

// What Apply would do.
struct Preview {
  std::vector<SettingChange> changes;
  std::vector<std::string> groups;  // "server settings"
  std::vector<std::string> files;   // that would be written
  std::vector<Launch> commands;     // that would be run as the super-user, in order
  std::vector<std::string> told;    // "the server", "the agent, process 812", "the menu agent"
  bool endsConnections = false;     // a service moves to another port or is switched off
  bool needsRestart = false;        // of the computer
};

// A tool that was launched, and what became of it. Not known where nobody waited for it.
struct CommandOutcome {
  Launch launch;
  ToolOutcome outcome;
};

struct ChangeReport {
  ChangeError error;
  std::vector<std::string> warnings;
  std::vector<SettingChange> changes;
  bool applied = false;               // Apply was pressed
  std::vector<std::string> saved;     // groups that the files hold now
  std::vector<std::string> notSaved;  // settings that they do not hold
  std::vector<CommandOutcome> commands;
  std::vector<std::string> told;       // processes that were notified of the change
  std::vector<std::string> notTold;    // and those that could not be notified
  std::vector<std::string> takenOver;  // settings that others had changed and that were taken over before
  Effects effects;

  bool ok() const { return !error; }
  // Whether anything on the computer is different now.
  bool changed() const { return applied && (!saved.empty() || !commands.empty()); }
};

}  // namespace norvik
