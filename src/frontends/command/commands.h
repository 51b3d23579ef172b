// Every command of norvikctl, one source file each. They write to the context's streams and answer with the
// exit status; they throw nothing.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/command/context.h"

namespace norvik::command {

using Words = std::vector<std::string>;

// What is going on: state, process, addresses, lock, pending changes.
ExitStatus showStatus(const Context& context);

// The settings of one page, of several whose names begin alike, or of all; or one setting in full. An empty
// name stands for all.
ExitStatus showSettings(const Context& context, const std::string& page);

// The values of the named settings, a line each.
ExitStatus getSettings(const Context& context, const Words& names);

// Sets NAME=VALUE... and applies.
ExitStatus setSettings(const Context& context, const Words& assignments, bool dryRun);

enum class ServerOrder { start, stop, restart };

// Starts, stops or restarts the daemon; blocks until it is done, ten to fifty seconds of the computer's time.
ExitStatus orderServer(const Context& context, ServerOrder order);

// Shows the open files limit, or with "adjust" or "reset" changes it.
ExitStatus openFilesLimit(const Context& context, const std::string& step);

enum class ManagementTool { displays, access };

ExitStatus openTool(const Context& context, ManagementTool tool);

// Writes a line at each change of state, address or lock until the program is told to end.
ExitStatus watch(const Context& context);

}  // namespace norvik::command
