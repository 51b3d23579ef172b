// What every command works with: the computer, the interface description, the terminal, and the options that
// hold for all commands.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "src/frontends/command/exit_status.h"
#include "src/frontends/command/questions.h"
#include "src/frontends/shared/checks/port_check.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::command {

// The computer beyond the ports: what a host may do that the pane does not.
struct Services {
  // Waits until the tools that the pane launched have ended; false where the time was up before.
  std::function<bool(std::chrono::milliseconds limit)> waitForTools;
  // Runs the run loop for so long; false once the program was told to end.
  std::function<bool(std::chrono::milliseconds time)> runFor;
  PortInUse portInUse;
};

struct Context {
  Platform& computer;  // its alert panels and its drawing are replaced by each command's own
  const InterfaceDescription& interface;
  Services services;
  std::ostream& out;  // results
  std::ostream& err;  // everything else
  bool json = false;
  Answers answers;

  // Writes a result as JSON, over several lines.
  void print(const nlohmann::ordered_json& result) const;
  // Writes a diagnostic, led by the program's name.
  void complain(std::string_view sentence) const;
};

// A reason to stop, for the person and for the shell; none where the status is kExitOk.
struct Error {
  ExitStatus status = kExitOk;
  std::string sentence;

  explicit operator bool() const { return status != kExitOk; }
};

}  // namespace norvik::command
