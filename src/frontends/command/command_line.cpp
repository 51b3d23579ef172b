// The line's grammar, over CLI11.
#include "src/frontends/command/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <sstream>

#include "src/frontends/command/nearest.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

// clang-format off
constexpr CommandDescription kCommands[] = {
    {"status",     "Show whether the server runs, how to connect to it, the lock, and what is not saved"},
    {"show",       "Show the settings of a page or of all pages, or one setting in full"},
    {"get",        "Print the values of settings, a line each"},
    {"set",        "Change settings, save them and put them into effect"},
    {"start",      "Start the server"},
    {"stop",       "Stop the server, which ends every connection"},
    {"restart",    "Stop the server and start it again"},
    {"limits",     "Show the open files limit, adjust it to the present values, or reset it"},
    {"displays",   "Open the tool that manages displays"},
    {"access",     "Open the tool that manages who may connect"},
    {"watch",      "Print a line at each change of state, address or lock, until interrupted"},
    {"completion", "Print a completion script for a shell"},
};
constexpr OptionDescription kOptions[] = {
    {"--root",   "Work on the sandbox in this folder instead of this computer"},
    {"--json",   "Print JSON"},
    {"--answer", "Answer every question with this button: default, alternate or other"},
};
// clang-format on
constexpr std::string_view kLimitSteps[] = {"adjust", "reset"};
constexpr std::string_view kAnswers[] = {"default", "alternate", "other"};
constexpr const char* kDryRun = "--dry-run";

std::string helpOf(std::string_view name) {
  for (const CommandDescription& command : kCommands) {
    if (command.name == name) return std::string(command.help);
  }
  for (const OptionDescription& option : kOptions) {
    if (option.name == name) return std::string(option.help);
  }
  return "";
}

std::vector<std::string> strings(std::span<const std::string_view> words) {
  return {words.begin(), words.end()};
}

// Every setting with its help text, in the order of the pages.
std::string settingsHelp(const std::vector<SettingDescription>& settings) {
  std::ostringstream text;
  text << "Settings:\n";
  for (const SettingDescription& setting : settings) {
    text << "  " << setting.name << "=VALUE, " << acceptedValues(setting) << '\n';
    for (const ControlDescription* control : setting.controls) {
      text << "      " << control->choice << (control->choice.empty() ? "" : ": ") << control->label
           << ".\n      " << control->help << '\n';
    }
  }
  return text.str();
}

struct Grammar {
  explicit Grammar(const SettingsSource& settings);

  CLI::App app{"Settings of the Norvik remote access server, from the command line.", "norvikctl"};
  CommandLine line;
  std::string answer;

 private:
  CLI::Option* addWords(const char* command, const char* name, const char* help);
};

Grammar::Grammar(const SettingsSource& settings) {
  app.set_version_flag("--version", "norvikctl " NORVIK_VERSION, "Print the version");
  app.set_help_flag("--help,-h", "Print this help");
  app.fallthrough();
  // What nobody takes is told by our own words, with the nearest that there is.
  app.allow_extras();
  app.require_subcommand(0, 1);
  app.get_formatter()->column_width(24);
  app.add_option("--root", line.root, helpOf("--root"))->type_name("DIR");
  app.add_flag("--json", line.json, helpOf("--json"));
  app.add_option("--answer", answer, helpOf("--answer"))->type_name("BUTTON");
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.get_formatter()->label("Subcommands", "Commands");
  for (const CommandDescription& each : kCommands)
    app.add_subcommand(std::string(each.name), helpOf(each.name));
  app.footer("\"norvikctl COMMAND --help\" tells more about a command, norvikctl(1) about all of them.");
  addWords("show", "PAGE", "A page, the start of its name, or a setting")->expected(0, 1);
  addWords("get", "NAME", "A setting; may be repeated")->required();
  addWords("limits", "STEP", "adjust or reset")->expected(0, 1);
  addWords("completion", "SHELL", "bash")->required()->expected(1);
  addWords("set", "NAME=VALUE", "A setting and its new value; may be repeated")->required();
  CLI::App* set = app.get_subcommand("set");
  set->add_flag(kDryRun, line.dryRun, "Only tell what would change");
  set->footer([&settings] { return settingsHelp(settings()); });
}

CLI::Option* Grammar::addWords(const char* command, const char* name, const char* help) {
  return app.get_subcommand(command)->add_option(name, line.words, help)->option_text(" ");
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names;
  for (const CommandDescription& command : kCommands) names.emplace_back(command.name);
  return names;
}

std::string unexpected(const std::string& word, bool isCommand) {
  if (word.starts_with('-')) {
    std::vector<std::string> names{kDryRun, "--help", "--version"};
    for (const OptionDescription& option : kOptions) names.emplace_back(option.name);
    return "no option is named \"" + word + "\"." + suggestion(word, names);
  }
  if (!isCommand) return "\"" + word + "\" is one word too many.";
  return "no command is named \"" + word + "\"." + suggestion(word, commandNames());
}

// What the grammar cannot say: which words a command takes, and how many.
std::string wrongWords(const CommandLine& line) {
  if (line.command == "limits" && !line.words.empty() &&
      std::ranges::count(kLimitSteps, line.words[0]) == 0) {
    return "limits takes adjust or reset, not \"" + line.words[0] + "\"." +
           suggestion(line.words[0], strings(kLimitSteps));
  }
  if (line.command == "completion" && line.words[0] != "bash") {
    return "there is completion for bash only, not for \"" + line.words[0] + "\".";
  }
  return "";
}

std::string readAnswer(const std::string& word, CommandLine& line) {
  if (word.empty()) return "";
  const auto* found = std::ranges::find(kAnswers, word);
  if (found == std::end(kAnswers)) {
    return "--answer takes default, alternate or other, not \"" + word + "\"." +
           suggestion(word, strings(kAnswers));
  }
  line.answer = 1 - static_cast<int>(found - std::begin(kAnswers));
  return "";
}

// The first thing that is wrong with the line; empty where nothing is.
std::string findFault(Grammar& grammar) {
  const auto commands = grammar.app.get_subcommands();
  const auto left = grammar.app.remaining();
  if (!left.empty()) return unexpected(left.front(), commands.empty());
  if (commands.empty()) return "a command is missing.";
  grammar.line.command = commands.front()->get_name();
  const std::string fault = wrongWords(grammar.line);
  return fault.empty() ? readAnswer(grammar.answer, grammar.line) : fault;
}

}  // namespace

std::span<const CommandDescription> commandDescriptions() {
  return kCommands;
}
std::span<const OptionDescription> optionDescriptions() {
  return kOptions;
}
std::span<const std::string_view> limitSteps() {
  return kLimitSteps;
}
std::span<const std::string_view> answerWords() {
  return kAnswers;
}

std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv, const SettingsSource& settings,
                                            std::ostream& out, std::ostream& err, ExitStatus& status) {
  Grammar grammar(settings);
  std::string fault;
  try {
    grammar.app.parse(argc, argv);
    fault = findFault(grammar);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      grammar.app.exit(error, out, err);
      status = kExitOk;
      return std::nullopt;
    }
    fault = std::string(error.what());
  }
  if (fault.empty()) return grammar.line;
  err << "norvikctl: " << fault << "\nTry \"norvikctl --help\".\n";
  status = kExitUsage;
  return std::nullopt;
}

}  // namespace norvik::command
