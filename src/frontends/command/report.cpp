// The text and the JSON of a change.
#include "src/frontends/command/report.h"

#include <ostream>

#include "src/frontends/command/table.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

std::string inParentheses(const std::string& text) {
  return text.empty() ? "" : "(" + text + ")";
}

// What became of a command, for a person; empty where it did what it should.
std::string remark(const CommandOutcome& command) {
  if (command.launch.refused) return "  " + translated("(refused)");
  if (!command.outcome.ended()) return "  " + translated("(has not ended)");
  return command.outcome.succeeded() ? "" : "  " + translated("(failed)");
}

template <typename Commands, typename Line>
std::vector<std::string> linesOf(const Commands& commands, Line line) {
  std::vector<std::string> lines;
  lines.reserve(commands.size());
  for (const auto& command : commands) lines.push_back(line(command));
  return lines;
}

std::vector<std::string> translatedEach(const std::vector<std::string>& constants) {
  return linesOf(constants, translated);
}

std::vector<std::string> answers(const Outcome& outcome) {
  return linesOf(outcome.questions, answered);
}

void writeNotes(std::ostream& out, const Outcome& outcome) {
  for (const std::string& note : outcome.notes) out << note << '\n';
}

void writePreview(std::ostream& out, const Outcome& outcome) {
  out << translated("A dry run: nothing is changed.") << "\n\n";
  writeChanges(out, outcome.report.changes);
  writeNotes(out, outcome);
  if (!outcome.preview) {
    out << translated("There would be nothing to save.") << '\n';
    return;
  }
  const Preview& preview = *outcome.preview;
  std::vector<TableRow> rows;
  appendList(rows, translated("Would ask"), answers(outcome));
  appendList(rows, translated("Would save"), translatedEach(preview.groups));
  appendList(rows, translated("Would write"), preview.files);
  appendList(rows, translated("Would run"), linesOf(preview.commands, norvik::commandLine));
  appendList(rows, translated("Would tell"), preview.told);
  out << '\n';
  writeTable(out, rows);
  if (preview.endsConnections)
    out << '\n' << translated("Connections to the service that changes would end.") << '\n';
  if (preview.needsRestart)
    out << '\n' << translated("The computer would have to restart before all of it is in effect.") << '\n';
}

void writeResult(std::ostream& out, const Outcome& outcome) {
  const ChangeReport& report = outcome.report;
  writeChanges(out, report.changes);
  writeNotes(out, outcome);
  if (!report.applied) {
    out << translated("There was nothing to save.") << '\n';
    return;
  }
  std::vector<TableRow> rows;
  appendList(rows, translated("Asked"), answers(outcome));
  appendList(rows, translated("Saved"), translatedEach(report.saved));
  appendList(rows, translated("Not saved"), report.notSaved);
  appendList(rows, translated("Taken over"), report.takenOver);
  appendList(rows, translated("Ran"), linesOf(report.commands, [](const CommandOutcome& command) {
               return commandLine(command.launch) + remark(command);
             }));
  appendList(rows, translated("Told"), report.told);
  appendList(rows, translated("Not told"), report.notTold);
  out << '\n';
  writeTable(out, rows);
}

Json previewJson(const Preview& preview) {
  Json commands = Json::array();
  for (const Launch& launch : preview.commands) {
    Json words{launch.tool};
    for (const std::string& argument : launch.arguments) words.push_back(argument);
    commands.push_back(std::move(words));
  }
  return {{"groups", preview.groups},
          {"files", preview.files},
          {"commands", std::move(commands)},
          {"told", preview.told},
          {"endsConnections", preview.endsConnections},
          {"needsRestart", preview.needsRestart}};
}

Json fieldsOf(const Outcome& outcome, bool dryRun) {
  const ChangeReport& report = outcome.report;
  return {{"dryRun", dryRun},
          {"preview", outcome.preview ? previewJson(*outcome.preview) : Json(nullptr)},
          {"notes", outcome.notes},
          {"questions", questionsJson(outcome.questions)},
          {"saved", report.saved},
          {"notSaved", report.notSaved},
          {"told", report.told},
          {"notTold", report.notTold},
          {"takenOver", report.takenOver},
          {"pending", outcome.pending},
          {"log", report.effects.logged}};
}

}  // namespace

void writeChanges(std::ostream& out, const std::vector<SettingChange>& changes) {
  std::vector<TableRow> rows;
  for (const SettingChange& change : changes) {
    const std::string step = change.from == change.to ? change.to : change.from + " -> " + change.to;
    rows.push_back({change.name, step, inParentheses(change.because)});
  }
  writeTable(out, rows);
}

void writeOutcome(const Context& context, const Outcome& outcome, bool dryRun) {
  const ChangeReport& report = outcome.report;
  const bool isShown = !context.json && (!report.error || report.applied);
  if (isShown && dryRun) writePreview(context.out, outcome);
  if (isShown && !dryRun) writeResult(context.out, outcome);
}

ExitStatus finishChange(const Context& context, const Outcome& outcome, bool dryRun, const Json& more) {
  for (const std::string& line : outcome.report.effects.logged) context.complain(line);
  Json fields = fieldsOf(outcome, dryRun);
  for (const auto& [name, value] : more.items()) fields[name] = value;
  return finish(context.output(), outcome.report, fields);
}

ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun) {
  writeOutcome(context, outcome, dryRun);
  return finishChange(context, outcome, dryRun);
}

}  // namespace norvik::command
