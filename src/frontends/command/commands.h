// Every command of norvikctl. They write to the context's streams and end with `finish`, which gives the exit
// status. They throw nothing but what too little memory throws. Their arguments were checked against their
// rows of the command table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/command/context.h"

namespace norvik::command {

struct CommandLine;

using Arguments = std::vector<std::string>;
using Handler = ExitStatus (*)(const Context& context, const CommandLine& line);

// What is going on: state, process, addresses, lock, pending changes.
ExitStatus showStatus(const Context& context, const CommandLine& line);

// The settings of one page, of several whose names begin alike, or of all; or one setting in full.
ExitStatus showSettings(const Context& context, const CommandLine& line);

// The values of the named settings, one per line.
ExitStatus getSettings(const Context& context, const CommandLine& line);

// Sets NAME=VALUE... and applies.
ExitStatus setSettings(const Context& context, const CommandLine& line);

// Gives the named settings their default values and applies.
ExitStatus unsetSettings(const Context& context, const CommandLine& line);

// Whether the server runs: the exit status says it.
ExitStatus isServerRunning(const Context& context, const CommandLine& line);

// Whether clients can connect, question by question, and where not, why: the exit status is the question's.
ExitStatus checkReach(const Context& context, const CommandLine& line);

// The server; each blocks until it is done, ten to fifty seconds of the computer's time. A server that is
// already in the wanted state is left alone. Restarting a stopped server starts it.
ExitStatus startServer(const Context& context, const CommandLine& line);
ExitStatus stopServer(const Context& context, const CommandLine& line);
ExitStatus restartServer(const Context& context, const CommandLine& line);

// Has the running server take up what is stored, and says what is in force then.
ExitStatus takeUpStored(const Context& context, const CommandLine& line);

// Writes settings as a profile.
ExitStatus exportProfile(const Context& context, const CommandLine& line);
// Sets what a profile says and applies.
ExitStatus importProfile(const Context& context, const CommandLine& line);
// Shows what importing a profile would change: the exit status says whether anything.
ExitStatus diffProfile(const Context& context, const CommandLine& line);

// Says what is wrong with the stored settings, with a file as server settings, or with a profile; nothing is
// changed.
ExitStatus validate(const Context& context, const CommandLine& line);
// Restores the kept copy of a damaged file, or of every damaged file, and notifies the server or the agents.
ExitStatus restoreFiles(const Context& context, const CommandLine& line);

// The changes that were made, the newest first.
ExitStatus showHistory(const Context& context, const CommandLine& line);
// Takes one of them back, as an ordinary change.
ExitStatus undoChange(const Context& context, const CommandLine& line);

// Shows the open files limit, or changes it in one of two steps.
ExitStatus openFilesLimit(const Context& context, const CommandLine& line);
inline constexpr std::string_view kAdjustStep = "adjust";
inline constexpr std::string_view kResetStep = "reset";

// Open a management tool and do not wait for a person to close it.
ExitStatus openDisplayManager(const Context& context, const CommandLine& line);
ExitStatus openAccessManager(const Context& context, const CommandLine& line);

// Writes a line for each change of state, address or lock until the program is interrupted.
ExitStatus watch(const Context& context, const CommandLine& line);

// Writes a completion script with the commands, options, settings and values in it.
ExitStatus printCompletion(const Context& context, const CommandLine& line);
inline constexpr std::string_view kShells[] = {"bash", "zsh", "fish"};

}  // namespace norvik::command
