// What every command works with: the computer, the interface description, the terminal, and the options that
// apply to all commands.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "src/adapters/services/computer_services.h"
#include "src/adapters/services/user_state.h"
#include "src/frontends/command/ending.h"
#include "src/frontends/command/questions.h"
#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/checks/port_check.h"
#include "src/frontends/shared/history/change_records.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::command {

// What a person, or the program at the other end of the input, typed.
struct TypedLine {
  enum class Kind {
    line,
    none,  // nothing yet
    gone,  // and nothing any more
  };
  Kind kind = Kind::none;
  std::string text = {};
};

// What a front end may do on the computer and the pane may not.
struct Services {
  // Blocks until the tools that the pane launched have ended; false where the limit passed first.
  std::function<bool(std::chrono::milliseconds limit)> waitForTools;
  // Calls `pass` at once, and again each time the run loop has run for `time`. Blocks until the program is
  // interrupted or `pass` returns false.
  std::function<void(std::chrono::milliseconds time, const std::function<bool()>& pass)> repeat;
  // The next line of standard input. Blocks until there is one, or for as long as the limit says.
  std::function<TypedLine(std::chrono::milliseconds limit)> typed;
  // A time that only grows.
  std::function<std::chrono::milliseconds()> clock;
  PortInUse portInUse;
  ComputerServices computer;
  UserState& state;        // what this user's programs keep from one run to the next
  ChangeRecords& records;  // of what is changed
  // Begins a change that is not to be cut in two: an interruption is only noted from now on.
  std::function<void()> deferInterruptions;
  // Whether there was one since.
  std::function<bool()> wasInterrupted;
  // The same, but not where it was only the terminal that went away.
  std::function<bool()> wasStopped;
};

// How long a change waits for others before it gives up with a failure that says so.
struct WaitLimits {
  std::chrono::milliseconds lock{10'000};   // for somebody else's change
  std::chrono::milliseconds tools{30'000};  // for the tools that it has launched
};

struct Context {
  Platform& computer;  // its alert panels and its drawing are replaced by each command's own
  const InterfaceDescription& interface;
  Services services;
  std::ostream& out;       // results
  std::ostream& err;       // everything else
  std::ostream* progress;  // shows that time passes; null where nobody watches
  bool json = false;
  Answers answers;
  std::string_view command;  // the name of the one that runs
  WaitLimits limits = {};
  std::optional<StoredFaults> faults = {};  // nothing for a command that does not look at the files

  // For `finish`, with which every command ends.
  Output output() const { return {out, err, json, command, faults ? &*faults : nullptr}; }
  // Writes a diagnostic after the program's name, control characters escaped.
  void complain(std::string_view sentence) const;
};

}  // namespace norvik::command
