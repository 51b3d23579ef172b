// Help as headings and tables.
#include "src/frontends/command/help.h"

#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/question_table.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/reach/ladder.h"

namespace norvik::command {

namespace {

constexpr std::size_t kIndent = 2;

void writeHeading(std::ostream& out, std::string_view heading) {
  out << '\n' << translated(heading) << '\n';
}

std::string optionForm(const Option& option) {
  std::string form(option.name);
  if (!option.alias.empty()) form += ", " + std::string(option.alias);
  if (!option.value.empty()) form += " " + std::string(option.value);
  return form;
}

// "NAME...", "[STEP]"; empty where the command takes no arguments.
std::string argumentForm(const ArgumentDescription& argument) {
  std::string form(argument.placeholder);
  if (argument.most > 1) form += "...";
  return form.empty() || argument.least > 0 ? form : "[" + form + "]";
}

// Those that the command takes; all of them where there is none.
void writeOptions(std::ostream& out, const Command* command) {
  std::vector<TableRow> rows;
  for (const Option& option : options()) {
    if (command != nullptr && !takes(*command, option)) continue;
    rows.push_back({optionForm(option), translated(option.help)});
  }
  writeHeading(out, english("Options:"));
  writeTable(out, rows, kIndent);
}

// Every question that --answer can answer; the first answer is the default.
void writeQuestions(std::ostream& out) {
  std::vector<TableRow> rows;
  for (const QuestionRow& question : questionTable()) {
    rows.push_back({formOf(question), translated(question.meaning)});
  }
  writeHeading(out, english("Questions for --answer, the default answer first:"));
  writeTable(out, rows, kIndent);
}

void writeExitStatuses(std::ostream& out) {
  std::vector<TableRow> rows;
  for (const ExitStatusRow& row : exitStatuses()) {
    rows.push_back({std::to_string(row.status), translated(row.meaning)});
  }
  const auto answers =
      std::to_string(rungs().front().exitStatus) + "-" + std::to_string(rungs().back().exitStatus);
  rows.insert(rows.begin() + 1, {answers, translated("check: what keeps clients out, see norvikctl(1)")});
  writeHeading(out, english("Exit status:"));
  writeTable(out, rows, kIndent);
}

// Every setting with its help text, in the order of the pages.
void writeSettings(std::ostream& out, const std::vector<SettingDescription>& settings) {
  writeHeading(out, english("Settings:"));
  for (const SettingDescription& setting : settings) {
    out << "  " << sentence("{1}=VALUE, {2}", {setting.name, acceptedValues(setting)}) << '\n';
    for (const ControlDescription* control : setting.controls) {
      const std::string label = sentence("{1}.", {control->label});
      out << "      " << (control->choice.empty() ? label : sentence("{1}: {2}", {control->choice, label}))
          << "\n      " << control->help << '\n';
    }
  }
}

}  // namespace

void writeHelp(std::ostream& out) {
  std::vector<TableRow> rows;
  for (const Command& command : commands()) {
    rows.push_back({std::string(command.name), translated(command.help)});
  }
  out << translated("Settings of the Norvik remote access server, from the command line.") << "\n\n"
      << sentence("Usage: {1}", {"norvikctl [OPTIONS] COMMAND [ARGUMENTS]"}) << '\n';
  writeHeading(out, english("Commands:"));
  writeTable(out, rows, kIndent);
  writeOptions(out, nullptr);
  writeQuestions(out);
  writeExitStatuses(out);
  out << '\n'
      << translated(
             "\"norvikctl COMMAND --help\" says more about a command; norvikctl(1) describes all of them.")
      << '\n';
}

void writeHelp(std::ostream& out, const Command& command, const std::vector<SettingDescription>& settings) {
  const std::string form = argumentForm(command.argument);
  const std::string usage =
      "norvikctl [OPTIONS] " + std::string(command.name) + (form.empty() ? "" : " ") + form;
  out << sentence("{1}.", {translated(command.help)}) << "\n\n" << sentence("Usage: {1}", {usage}) << '\n';
  if (!form.empty()) {
    writeHeading(out, english("Arguments:"));
    writeTable(out, {{std::string(command.argument.placeholder), translated(command.argument.help)}},
               kIndent);
  }
  writeOptions(out, &command);
  if (listsSettings(command)) writeSettings(out, settings);
}

bool listsSettings(const Command& command) {
  return command.argument.kind == ArgumentKind::assignment;
}

}  // namespace norvik::command
