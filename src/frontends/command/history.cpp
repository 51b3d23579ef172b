// norvikctl history and undo: the changes that were made by any front end, and one of them taken back as a
// change of its own.
#include <algorithm>
#include <ostream>

#include "src/frontends/command/change.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/diagnostic.h"
#include "src/frontends/command/table.h"
#include "src/frontends/command/wish_change.h"
#include "src/frontends/shared/change/setting_groups.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/history/history.h"
#include "src/frontends/shared/history/reversal.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

std::string valueText(const SettingValue& value) {
  if (const auto* isOn = std::get_if<bool>(&value)) return *isOn ? "on" : "off";
  const Json json = jsonOf(value);
  return json.is_string() ? json.get<std::string>() : json.dump();
}

Json entryJson(const HistoryEntry& entry, std::size_t number) {
  Json settings = Json::array();
  for (const RecordedSetting& setting : entry.change.settings) {
    settings.push_back(
        {{"name", setting.name}, {"old", jsonOf(setting.before)}, {"new", jsonOf(setting.after)}});
  }
  return {{"number", number},
          {"time", entry.time},
          {"frontEnd", entry.frontEnd},
          {"user", entry.user},
          {"settings", std::move(settings)},
          {"outcome", entry.outcome},
          {"saved", entry.change.saved},
          {"notSaved", entry.change.notSaved}};
}

void writeEntry(std::vector<TableRow>& rows, const HistoryEntry& entry, std::size_t number) {
  TableRow lead{std::to_string(number), printable(entry.time), printable(entry.frontEnd),
                printable(entry.outcome)};
  std::vector<std::string> lines;
  for (const RecordedSetting& setting : entry.change.settings) {
    lines.push_back(setting.name + "  " + valueText(setting.before) + " -> " + valueText(setting.after));
  }
  if (lines.empty()) lines = entry.change.saved;
  if (lines.empty()) lines.emplace_back();
  for (const std::string& line : lines) {
    lead.push_back(printable(line));  // the file may hold anything
    rows.push_back(std::exchange(lead, TableRow{"", "", "", ""}));
  }
}

std::string skippedLines(const Context& context, std::size_t count) {
  return counted("{1} line of {2} is no entry; it is left where it is.",
                 "{1} lines of {2} are no entries; they are left where they are.", count,
                 {context.services.state.placeOf(kHistoryFile)});
}

// What can be read, with what is wrong with it as the report's error or warning.
HistoryReading read(const Context& context, ChangeReport& report) {
  HistoryReading reading = readHistory(context.services.state);
  if (!reading.unreadable.empty()) {
    report.error = failure(FailureCode::damaged,
                           sentence("The history, {1}, cannot be read: {2}.",
                                    {context.services.state.placeOf(kHistoryFile), reading.unreadable}));
  } else if (reading.skipped > 0) {
    report.warnings.push_back(skippedLines(context, reading.skipped));
  }
  return reading;
}

// The number of the argument; nothing for a word that is none.
std::optional<std::size_t> entryNumber(const CommandLine& line) {
  if (line.arguments.empty()) return 1;
  const auto number = wholeNumber(line.arguments.front());
  if (!number || *number < 1) return std::nullopt;
  return static_cast<std::size_t>(*number);
}

ChangeError wrongEntry(const CommandLine& line, const HistoryReading& history) {
  const std::size_t count = history.entries.size();
  if (!entryNumber(line)) {
    return failure(FailureCode::usage,
                   sentence("undo takes the number of an entry, not \"{1}\".", {line.arguments.front()}));
  }
  if (count == 0) {
    return failure(FailureCode::notSettable,
                   translated("The history is empty; there is nothing to take back."));
  }
  return failure(FailureCode::usage,
                 counted("The history has {1} entry alone.", "The history has {1} entries alone.", count));
}

bool isAdministrators(const Context& context, const RecordedSetting& recorded) {
  if (recorded.name == kOpenFilesLimitName) return true;
  const auto known = settingsOf(context.interface);
  const auto found = std::ranges::find(known, recorded.name, &SettingDescription::name);
  return found != known.end() && found->isAdministrators();
}

ChangeError takeBack(const Reversal& reversal, Session& session, std::vector<std::string>& notes) {
  session.pane().updateGui(false, false);  // a shadow has used what the panes of a process share
  if (!reversal.errors.empty()) return reversal.errors.front();
  notes.insert(notes.end(), reversal.notes.begin(), reversal.notes.end());
  if (reversal.empty() && reversal.leavesSome) {
    ChangeError error =
        failure(FailureCode::notSettable,
                translated("What there is to take back was changed again since. Nothing was changed."));
    error.advice = translated("Take it back all the same with --changed-again.");
    return error;
  }
  return applyReversal(session.edited(), reversal, notes);
}

ChangeRequest requestToReturn(const Context& context, const std::vector<RecordedSetting>& settings,
                              ChangedAgain again) {
  ChangeRequest request;
  const auto isLimit = [](const RecordedSetting& each) { return each.name == kOpenFilesLimitName; };
  request.requiresUnlock = std::ranges::any_of(
      settings, [&](const RecordedSetting& each) { return isAdministrators(context, each); });
  request.previewsWhileLocked = std::ranges::none_of(settings, isLimit);
  for (const RecordedSetting& each : settings) {
    if (!isLimit(each)) request.requested.push_back(each.name);
  }
  for (const ControlDescription* control : context.interface.controls()) {
    if (control->displayOnly && !request.previewsWhileLocked) request.requested.push_back(control->label);
  }
  request.edit = [&context, settings, again](Session& session, std::vector<std::string>& notes) {
    return takeBack(reversalOf(context.computer, context.interface, settings, again), session, notes);
  };
  return request;
}

}  // namespace

ExitStatus showHistory(const Context& context, const CommandLine& /*line*/) {
  ChangeReport report;
  const HistoryReading history = read(context, report);
  Json entries = Json::array();
  std::vector<TableRow> rows;
  for (std::size_t i = 0; i < history.entries.size(); ++i) {
    if (context.json) {
      entries.push_back(entryJson(history.entries[i], i + 1));
    } else {
      writeEntry(rows, history.entries[i], i + 1);
    }
  }
  if (!context.json && rows.empty() && report.ok())
    context.out << translated("The history is empty.") << '\n';
  writeTable(context.out, rows);
  return finish(context.output(), report, {{"entries", std::move(entries)}});
}

ExitStatus undoChange(const Context& context, const CommandLine& line) {
  ChangeReport report;
  const HistoryReading history = read(context, report);
  if (report.error) return finish(context.output(), report.error);
  const auto number = entryNumber(line);
  if (!number || *number > history.entries.size()) return finish(context.output(), wrongEntry(line, history));
  const HistoryEntry& entry = history.entries[*number - 1];
  if (entry.change.settings.empty()) {
    return finish(context.output(),
                  failure(FailureCode::notSettable,
                          translated("This change set no setting, so there is nothing to take back.")));
  }
  const ChangedAgain again = line.changedAgain ? ChangedAgain::takenBackToo : ChangedAgain::leftAlone;
  return change(context, requestToReturn(context, entry.change.settings, again), line.dryRun);
}

}  // namespace norvik::command
