// The text and the JSON of a change.
#include "src/frontends/command/report.h"

#include <ostream>

#include "src/frontends/command/table.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

std::string inParentheses(const std::string& text) {
  return text.empty() ? "" : "(" + text + ")";
}

void writeChanges(std::ostream& out, const std::vector<Change>& changes) {
  std::vector<TableRow> rows;
  for (const Change& change : changes) {
    const std::string step = change.from == change.to ? change.to : change.from + " -> " + change.to;
    rows.push_back({change.name, step, inParentheses(change.because)});
  }
  writeTable(out, rows);
}

std::string answered(const Question& question) {
  return question.title + ": " + (question.answer ? buttonOf(question, *question.answer) : "not answered");
}

// A line for each word of the list, with the heading in front of the first.
void appendList(std::vector<TableRow>& rows, const std::string& heading,
                const std::vector<std::string>& list) {
  for (const std::string& word : list) rows.push_back({&word == &list.front() ? heading : "", word});
}

std::vector<std::string> commandLines(const Effects& effects) {
  std::vector<std::string> lines;
  for (const Launch& launch : effects.launches) {
    if (!launch.reports) lines.push_back(commandLine(launch) + (launch.refused ? "  (refused)" : ""));
  }
  return lines;
}

std::vector<std::string> notified(const Effects& effects) {
  std::vector<std::string> lines;
  for (const int32_t pid : effects.signalled) lines.push_back("the agent, process " + std::to_string(pid));
  for (const std::string& name : effects.posted) lines.push_back("the menu agent, with " + name);
  return lines;
}

void writeText(const Context& context, const Outcome& outcome, bool dryRun) {
  std::ostream& out = context.out;
  if (dryRun) out << "A dry run: nothing is changed.\n\n";
  writeChanges(out, outcome.changes);
  for (const std::string& note : outcome.notes) out << note << '\n';
  if (!outcome.applied) {
    out << (dryRun ? "There would be nothing to save.\n" : "There was nothing to save.\n");
    return;
  }
  std::vector<std::string> questions;
  for (const Question& question : outcome.questions) questions.push_back(answered(question));
  std::vector<TableRow> rows;
  appendList(rows, dryRun ? "Would ask" : "Asked", questions);
  if (!outcome.error) appendList(rows, dryRun ? "Would save" : "Saved", outcome.saved);
  appendList(rows, dryRun ? "Would run" : "Ran", commandLines(outcome.effects));
  appendList(rows, dryRun ? "Would notify" : "Notified", notified(outcome.effects));
  if (!dryRun && !outcome.pending.empty()) appendList(rows, "Still pending", outcome.pending);
  out << '\n';
  writeTable(out, rows);
}

Json questionsJson(const std::vector<Question>& questions) {
  Json list = Json::array();
  for (const Question& question : questions) {
    list.push_back(
        {{"title", question.title},
         {"buttons", question.buttons},
         {"answer", question.answer ? Json(buttonOf(question, *question.answer)) : Json(nullptr)}});
  }
  return list;
}

Json outcomeJson(const Outcome& outcome, bool dryRun) {
  Json changes = Json::array();
  for (const Change& change : outcome.changes) {
    Json entry{{"name", change.name}, {"from", change.oldValue}, {"to", change.newValue}};
    if (!change.because.empty()) entry["because"] = change.because;
    changes.push_back(std::move(entry));
  }
  return {{"dryRun", dryRun},
          {"changes", std::move(changes)},
          {"notes", outcome.notes},
          {"questions", questionsJson(outcome.questions)},
          {"saved", outcome.error ? std::vector<std::string>() : outcome.saved},
          {"commands", commandsJson(outcome.effects)},
          {"signalled", outcome.effects.signalled},
          {"notifications", outcome.effects.posted},
          {"pending", outcome.pending}};
}

}  // namespace

std::string commandLine(const Launch& launch) {
  std::string line = launch.tool;
  for (const std::string& word : launch.arguments) {
    const bool bare = !word.empty() && word.find(' ') == std::string::npos;
    line += bare ? " " + word : " \"" + word + "\"";
  }
  return line;
}

nlohmann::ordered_json commandsJson(const Effects& effects) {
  Json list = Json::array();
  for (const Launch& launch : effects.launches) {
    if (launch.reports || launch.refused) continue;
    std::vector<std::string> words{launch.tool};
    words.insert(words.end(), launch.arguments.begin(), launch.arguments.end());
    list.push_back(words);
  }
  return list;
}

ExitStatus report(const Context& context, const Outcome& outcome, bool dryRun) {
  // A change that was stopped before Apply has nothing to show but the reason.
  if (!outcome.error || outcome.applied) {
    if (context.json) {
      context.print(outcomeJson(outcome, dryRun));
    } else {
      writeText(context, outcome, dryRun);
    }
  }
  // What a preview logs comes from withholding the effects.
  if (!outcome.previewed) {
    for (const std::string& line : outcome.effects.logged) context.complain(line);
  }
  for (const std::string& warning : outcome.warnings) context.complain("warning: " + warning);
  if (outcome.error) context.complain(outcome.error.sentence);
  return outcome.error.status;
}

}  // namespace norvik::command
