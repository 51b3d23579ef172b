// The commands of norvikctl, a row each: name, help, arguments and handler. Parsing, help, completion and the
// manual page's test are loops over this table.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string_view>

#include "src/frontends/command/commands.h"

namespace norvik::command {

enum class ArgumentKind { none, pageOrSetting, setting, assignment, choice, file, number };

struct ArgumentDescription {
  ArgumentKind kind = ArgumentKind::none;
  std::string_view placeholder;  // what help calls it: "NAME=VALUE"
  std::string_view help;
  std::size_t least = 0;  // how many of them the command needs, and takes
  std::size_t most = 0;
  std::span<const std::string_view> choices;  // of ArgumentKind::choice
};

inline constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

// What a command does with what is stored; each does what those before it do.
enum class SettingsUse {
  none,
  reads,     // warns first of what is wrong with the files
  changes,   // waits for somebody else's change
  previews,  // can show what it would do
};

struct Command {
  std::string_view name;
  std::string_view help;
  ArgumentDescription argument;
  SettingsUse use = SettingsUse::none;
  Handler run = nullptr;
};

// In the order of the help.
std::span<const Command> commands();
// Null where no command has that name.
const Command* findCommand(std::string_view name);

}  // namespace norvik::command
