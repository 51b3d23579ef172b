// The commands of the scenario language: one table for each theme, each in its own file.
#pragma once

#include <span>
#include <string_view>

#include "src/frontends/scenario/arguments.h"
#include "src/frontends/scenario/session.h"

namespace norvik::scenario {

// Takes what it needs from the arguments; anything left is malformed.
using CommandFunction = void (*)(Session& session, Arguments& arguments);

struct CommandRow {
  std::string_view name;
  CommandFunction run;
};

std::span<const CommandRow> fileCommands();      // file_commands.cpp
std::span<const CommandRow> processCommands();   // process_commands.cpp
std::span<const CommandRow> computerCommands();  // computer_commands.cpp
std::span<const CommandRow> lifeCommands();      // life_commands.cpp
std::span<const CommandRow> controlCommands();   // control_commands.cpp
std::span<const CommandRow> callCommands();      // call_commands.cpp
std::span<const CommandRow> questionCommands();  // question_commands.cpp

// Throws Malformed for an unknown name.
CommandFunction commandNamed(std::string_view name);

}  // namespace norvik::scenario
