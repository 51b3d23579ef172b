// norvikctl restore: the kept copies of damaged files, put back.
#include <algorithm>
#include <ostream>

#include "src/frontends/command/change.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/text/join.h"

namespace norvik::command {

namespace {

std::vector<std::string> storedPaths(const Context& context) {
  std::vector<std::string> paths;
  for (const StoredFile& file : storedFiles()) {
    paths.push_back(context.computer.propertyLists.stringByExpandingTildeInPath(file.path));
  }
  return paths;
}

// The damaged files, or the one that is named.
std::vector<FileFinding> damaged(const SettingsChange& change, const Arguments& names) {
  std::vector<FileFinding> files;
  std::ranges::copy_if(change.findings(), std::back_inserter(files), [&](const FileFinding& finding) {
    return finding.damaged && (names.empty() || finding.file == names.front());
  });
  return files;
}

// The pane reads and writes these with its lock open.
bool needsRights(const std::vector<FileFinding>& files) {
  return std::ranges::any_of(files, [](const FileFinding& file) {
    return file.group == Group::server || file.group == Group::limit;
  });
}

// One file after the other, up to the first failure.
ChangeReport restoreAll(SettingsChange& change, const std::vector<FileFinding>& files) {
  ChangeReport all;
  for (const FileFinding& file : files) {
    const ChangeReport one = change.restore(file);
    addReport(one, all);
    if (!one.ok()) break;
  }
  return all;
}

void write(const Context& context, const ChangeReport& report) {
  std::vector<std::string> commands;
  for (const CommandOutcome& command : report.commands) commands.push_back(commandLine(command.launch));
  std::vector<TableRow> rows;
  appendList(rows, translated("Restored"), report.saved);
  appendList(rows, translated("Ran"), commands);
  appendList(rows, translated("Told"), report.told);
  appendList(rows, translated("Not told"), report.notTold);
  writeTable(context.out, rows);
}

ExitStatus restore(const Context& context, const Arguments& names) {
  Questions questions(context.answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::real, Opening::later);
  SettingsChange change(session.pane(), session.recording(), context.computer, context.interface,
                        context.services.computer, changeOptions(context));
  if (!change.holdLock()) return finish(context.output(), lockIsTaken());
  change.look();
  session.open();
  const std::vector<FileFinding> files = damaged(change, names);
  if (needsRights(files) && !session.unlock()) {
    return finish(context.output(),
                  failure(FailureCode::notAllowed,
                          translated("This needs administrator rights, which were not granted.")));
  }
  change.loaded();
  context.services.deferInterruptions();
  const ChangeReport report = restoreAll(change, files);
  const std::string note = translated("Nothing is damaged, so there is nothing to restore.");
  if (!context.json && files.empty()) context.out << note << '\n';
  if (!context.json) write(context, report);
  const std::vector<std::string> notes = files.empty() ? std::vector{note} : std::vector<std::string>();
  return finish(
      context.output(), report,
      {{"notes", notes}, {"saved", report.saved}, {"told", report.told}, {"notTold", report.notTold}});
}

}  // namespace

ExitStatus restoreFiles(const Context& context, const CommandLine& line) {
  const auto known = storedPaths(context);
  if (!line.arguments.empty() && std::ranges::count(known, line.arguments.front()) == 0) {
    const std::string& typed = line.arguments.front();
    return finish(
        context.output(),
        failure(FailureCode::usage,
                joinedSentences(sentence("\"{1}\" is no settings file.", {typed}) + suggestion(typed, known),
                                sentence("They are {1}.", {joined(known, ", ")}))));
  }
  return restore(context, line.arguments);
}

}  // namespace norvik::command
