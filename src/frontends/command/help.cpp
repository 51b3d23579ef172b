// Help as headings and tables.
#include "src/frontends/command/help.h"

#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/question_table.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/reach/ladder.h"

namespace norvik::command {

namespace {

constexpr std::size_t kIndent = 2;

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
    rows.push_back({optionForm(option), std::string(option.help)});
  }
  out << "\nOptions:\n";
  writeTable(out, rows, kIndent);
}

// Every question that --answer can answer; the first answer is the default.
void writeQuestions(std::ostream& out) {
  std::vector<TableRow> rows;
  for (const QuestionRow& question : questionTable()) {
    rows.push_back({formOf(question), std::string(question.meaning)});
  }
  out << "\nQuestions for --answer, the default answer first:\n";
  writeTable(out, rows, kIndent);
}

void writeExitStatuses(std::ostream& out) {
  std::vector<TableRow> rows;
  for (const ExitStatusRow& row : exitStatuses()) {
    rows.push_back({std::to_string(row.status), std::string(row.meaning)});
  }
  const auto answers =
      std::to_string(rungs().front().exitStatus) + "-" + std::to_string(rungs().back().exitStatus);
  rows.insert(rows.begin() + 1, {answers, "check: what keeps clients out, see norvikctl(1)"});
  out << "\nExit status:\n";
  writeTable(out, rows, kIndent);
}

// Every setting with its help text, in the order of the pages.
void writeSettings(std::ostream& out, const std::vector<SettingDescription>& settings) {
  out << "\nSettings:\n";
  for (const SettingDescription& setting : settings) {
    out << "  " << setting.name << "=VALUE, " << acceptedValues(setting) << '\n';
    for (const ControlDescription* control : setting.controls) {
      out << "      " << control->choice << (control->choice.empty() ? "" : ": ") << control->label
          << ".\n      " << control->help << '\n';
    }
  }
}

}  // namespace

void writeHelp(std::ostream& out) {
  std::vector<TableRow> rows;
  for (const Command& command : commands()) {
    rows.push_back({std::string(command.name), std::string(command.help)});
  }
  out << "Settings of the Norvik remote access server, from the command line.\n\n"
         "Usage: norvikctl [OPTIONS] COMMAND [ARGUMENTS]\n\n"
         "Commands:\n";
  writeTable(out, rows, kIndent);
  writeOptions(out, nullptr);
  writeQuestions(out);
  writeExitStatuses(out);
  out << "\n\"norvikctl COMMAND --help\" says more about a command; norvikctl(1) describes all of them.\n";
}

void writeHelp(std::ostream& out, const Command& command, const std::vector<SettingDescription>& settings) {
  const std::string form = argumentForm(command.argument);
  out << command.help << ".\n\nUsage: norvikctl [OPTIONS] " << command.name << (form.empty() ? "" : " ")
      << form << '\n';
  if (!form.empty()) {
    out << "\nArguments:\n";
    writeTable(out, {{std::string(command.argument.placeholder), std::string(command.argument.help)}},
               kIndent);
  }
  writeOptions(out, &command);
  if (listsSettings(command)) writeSettings(out, settings);
}

bool listsSettings(const Command& command) {
  return command.argument.kind == ArgumentKind::assignment;
}

}  // namespace norvik::command
