// The text and the JSON of a change.
#include "src/frontends/command/report.h"

#include <ostream>

#include "src/frontends/command/table.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

std::string inParentheses(const std::string& text) {
  return text.empty() ? "" : "(" + text + ")";
}

void writeChanges(std::ostream& out, const std::vector<SettingChange>& changes) {
  std::vector<TableRow> rows;
  for (const SettingChange& change : changes) {
    const std::string step = change.from == change.to ? change.to : change.from + " -> " + change.to;
    rows.push_back({change.name, step, inParentheses(change.because)});
  }
  writeTable(out, rows);
}

// A line for each word of the list, with the heading in front of the first.
void appendList(std::vector<TableRow>& rows, const std::string& heading,
                const std::vector<std::string>& list) {
  for (const std::string& word : list) rows.push_back({&word == &list.front() ? heading : "", word});
}

std::vector<std::string> commandLines(const std::vector<CommandOutcome>& commands) {
  std::vector<std::string> lines;
  lines.reserve(commands.size());
  for (const CommandOutcome& command : commands) {
    lines.push_back(commandLine(command.launch) + (command.launch.refused ? "  (refused)" : ""));
  }
  return lines;
}

std::vector<std::string> told(const Effects& effects) {
  std::vector<std::string> lines;
  for (const int32_t pid : effects.signalled) lines.push_back("the agent, process " + std::to_string(pid));
  for (const std::string& name : effects.posted) lines.push_back("the menu agent, with " + name);
  return lines;
}

void writeText(const Context& context, const Outcome& outcome, bool dryRun) {
  const ChangeReport& report = outcome.report;
  std::ostream& out = context.out;
  if (dryRun) out << "A dry run: nothing is changed.\n\n";
  writeChanges(out, report.changes);
  for (const std::string& note : outcome.notes) out << note << '\n';
  if (!report.applied && !outcome.wouldApply) {
    out << (dryRun ? "There would be nothing to save.\n" : "There was nothing to save.\n");
    return;
  }
  std::vector<std::string> questions;
  for (const Question& question : outcome.questions) questions.push_back(answered(question));
  std::vector<TableRow> rows;
  appendList(rows, dryRun ? "Would ask" : "Asked", questions);
  appendList(rows, dryRun ? "Would save" : "Saved", report.saved);
  appendList(rows, dryRun ? "Would run" : "Ran", commandLines(report.commands));
  appendList(rows, dryRun ? "Would notify" : "Notified", told(report.effects));
  if (!dryRun && !outcome.pending.empty()) appendList(rows, "Still pending", outcome.pending);
  out << '\n';
  writeTable(out, rows);
}

Json wordsOf(const std::vector<CommandOutcome>& commands) {
  Json list = Json::array();
  for (const CommandOutcome& command : commands) {
    Json words{command.launch.tool};
    for (const std::string& argument : command.launch.arguments) words.push_back(argument);
    list.push_back(std::move(words));
  }
  return list;
}

Json previewJson(const ChangeReport& report) {
  return {{"groups", report.saved}, {"commands", wordsOf(report.commands)}, {"told", told(report.effects)}};
}

// Of a dry run, everything that did not happen is in its preview.
Json fieldsOf(const Outcome& outcome, bool dryRun) {
  const ChangeReport& report = outcome.report;
  const std::vector<std::string> none;
  return {{"dryRun", dryRun},
          {"preview", dryRun && !report.error ? previewJson(report) : Json(nullptr)},
          {"notes", outcome.notes},
          {"questions", questionsJson(outcome.questions)},
          {"saved", dryRun ? none : report.saved},
          {"notSaved", report.notSaved},
          {"told", dryRun ? none : told(report.effects)},
          {"pending", dryRun ? none : outcome.pending},
          {"log", dryRun ? none : report.effects.logged}};
}

}  // namespace

ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun) {
  ChangeReport done = outcome.report;
  if (!context.json && (!done.error || done.applied)) writeText(context, outcome, dryRun);
  const Json fields = fieldsOf(outcome, dryRun);
  // What a preview records and logs comes from withholding the effects.
  if (!done.applied) done.commands.clear();
  if (done.applied) {
    for (const std::string& line : done.effects.logged) context.complain(line);
  }
  return finish(context.output(), done, fields);
}

}  // namespace norvik::command
