// The command line of norvikctl: its options as a table, and what a given line says.
#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/command/command_table.h"
#include "src/frontends/command/questions.h"

namespace norvik::command {

struct CommandLine {
  const Command* command = nullptr;  // null only where help or the version is asked for
  Arguments arguments;
  std::optional<std::string> root;  // a folder; none for the computer itself
  bool json = false;
  bool dryRun = false;
  bool help = false;
  bool version = false;
  bool qrCode = false;
  std::chrono::seconds waitForReach{0};
  bool exact = false;
  bool changedOnly = false;
  bool prometheus = false;
  bool changedAgain = false;
  std::optional<std::chrono::seconds> trial;  // how long a change is on trial; none for no trial
  GivenAnswers answers;
  WaitLimits limits;
};

// What an option's value is, for the completion.
enum class OptionValue { none, folder, answer, number };

struct Option {
  std::string_view name;   // "--root"
  std::string_view alias;  // "-h"; empty where it has none
  std::string_view value;  // what help calls its value; empty where it takes none
  std::string_view help;
  OptionValue takes;
  SettingsUse least;      // a command with less does not take it
  std::string_view only;  // the commands that take it, as words: "import diff"; empty for all others
  std::string (*apply)(CommandLine& line,
                       std::string_view value);  // returns what is wrong; empty for nothing
};

// The options, which may precede or follow the command. In the order of the help.
std::span<const Option> options();
bool takes(const Command& command, const Option& option);

// What the words behind the program's name say. Where they are wrong, `fault` is a sentence about the first
// mistake, and else it is empty; the line then says what could be read, above all in which form a person
// wants to be told. Where help or the version is asked for, the command and its arguments may be missing.
CommandLine parseCommandLine(const std::vector<std::string>& words, std::string& fault);

}  // namespace norvik::command
