// The command line of norvikctl: its commands and options as tables, and what a given line says.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/command/exit_status.h"
#include "src/frontends/shared/interface/setting_description.h"

namespace norvik::command {

struct CommandDescription {
  std::string_view name;
  std::string_view help;
};
std::span<const CommandDescription> commandDescriptions();

struct OptionDescription {
  std::string_view name;  // "--root"
  std::string_view help;
};
// The options of every command.
std::span<const OptionDescription> optionDescriptions();

// The words that some commands and options take.
std::span<const std::string_view> limitSteps();   // of limits
std::span<const std::string_view> answerWords();  // of --answer, in the order 1, 0, -1

struct CommandLine {
  std::string command;
  std::vector<std::string> words;  // behind the command
  std::string root;                // empty for the computer itself
  bool json = false;
  bool dryRun = false;
  std::optional<int> answer;  // 1, 0 or -1
};

// Tells the settings that a person can set.
using SettingsSource = std::function<std::vector<SettingDescription>()>;

// What the line says. Where it asks for help or the version, or is wrong, writes that to `out` or `err`, sets
// `status` and returns nothing. The help of set lists the settings, which are asked for only then.
std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv, const SettingsSource& settings,
                                            std::ostream& out, std::ostream& err, ExitStatus& status);

}  // namespace norvik::command
