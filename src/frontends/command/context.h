// What every command works with: the computer, the interface description, the terminal, and the options that
// apply to all commands.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "src/frontends/command/exit_status.h"
#include "src/frontends/command/questions.h"
#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/checks/port_check.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::command {

// What a front end may do on the computer and the pane may not.
struct Services {
  // Blocks until the tools that the pane launched have ended; false where the limit passed first.
  std::function<bool(std::chrono::milliseconds limit)> waitForTools;
  // Calls `pass` at once, and again each time the run loop has run for `time`. Blocks until the program is
  // interrupted or `pass` returns false.
  std::function<void(std::chrono::milliseconds time, const std::function<bool()>& pass)> repeat;
  PortInUse portInUse;
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

  // Writes a result as JSON, over several lines.
  void print(const nlohmann::ordered_json& result) const;
  // Writes a diagnostic after the program's name, control characters escaped.
  void complain(std::string_view sentence) const;
};

// A setting's value in JSON, with its type.
nlohmann::ordered_json jsonOf(const SettingValue& value);

// A reason to stop, for the person and for the shell; none where the status is kExitOk.
struct Error {
  ExitStatus status = kExitOk;
  std::string sentence;

  explicit operator bool() const { return status != kExitOk; }
};

}  // namespace norvik::command
