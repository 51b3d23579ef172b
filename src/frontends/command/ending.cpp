// The JSON object of a result, part by part.
#include "src/frontends/command/ending.h"

#include <ostream>

#include "src/frontends/command/diagnostic.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

// Nothing is null, not an empty text, so that a script need not know which texts may be empty.
Json textOrNull(std::string_view text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

Json errorJson(const ChangeError& error) {
  if (!error) return nullptr;
  return {{"status", exitStatusOf(error.code)},
          {"code", codeWord(error.code)},
          {"message", error.sentence},
          {"setting", textOrNull(error.setting)},
          {"advice", textOrNull(error.advice)}};
}

Json changesJson(const std::vector<SettingChange>& changes) {
  Json list = Json::array();
  for (const SettingChange& change : changes) {
    list.push_back({{"name", change.name},
                    {"label", change.label},
                    {"page", change.page},
                    {"from", jsonOf(change.oldValue)},
                    {"to", jsonOf(change.newValue)},
                    {"because", textOrNull(change.because)}});
  }
  return list;
}

// What became of a tool, in a word. Where nobody asked, the outcome names no tool.
std::string_view outcomeWord(const CommandOutcome& command) {
  if (command.launch.refused) return "refused";
  if (command.outcome.tool.empty()) return "unknown";
  switch (command.outcome.end) {
    case ToolOutcome::End::waiting:
      return "waiting";
    case ToolOutcome::End::running:
      return "running";
    case ToolOutcome::End::killed:
      return "killed";
    case ToolOutcome::End::exited:
      break;
  }
  return command.outcome.succeeded() ? "succeeded" : "failed";
}

Json commandsJson(const std::vector<CommandOutcome>& commands) {
  Json list = Json::array();
  for (const CommandOutcome& command : commands) {
    Json words{command.launch.tool};
    for (const std::string& argument : command.launch.arguments) words.push_back(argument);
    const bool ended = !command.launch.refused && !command.outcome.tool.empty() && command.outcome.ended();
    list.push_back({{"command", std::move(words)},
                    {"outcome", outcomeWord(command)},
                    {"status", ended ? Json(command.outcome.status) : Json(nullptr)},
                    {"words", command.outcome.words}});
  }
  return list;
}

Json warningsJson(const Output& output, const ChangeReport& report) {
  Json list = Json::array();
  if (output.faults != nullptr) {
    for (const StoredFault& fault : *output.faults) list.push_back(fault.finding.sentence);
  }
  for (const std::string& warning : report.warnings) list.push_back(warning);
  return list;
}

Json resultJson(const Output& output, const ChangeReport& report, const Json& fields) {
  Json result{{"schema", kSchemaVersion},
              {"command", textOrNull(output.command)},
              {"ok", report.ok()},
              {"changed", report.changed()},
              {"changes", changesJson(report.changes)},
              {"error", errorJson(report.error)},
              {"warnings", warningsJson(output, report)},
              {"commands", commandsJson(report.commands)}};
  if (output.faults != nullptr) result["damaged"] = damagedJson(*output.faults);
  for (const auto& [name, value] : fields.items()) result[name] = value;
  return result;
}

}  // namespace

ExitStatus finish(const Output& output, const ChangeReport& report, const Json& fields) {
  if (output.json) {
    // A host name may be anything, and bytes that are no text must not end the program.
    output.out << resultJson(output, report, fields).dump(2, ' ', false, Json::error_handler_t::replace)
               << '\n';
  }
  for (const std::string& warning : report.warnings)
    writeDiagnostic(output.err, sentence("warning: {1}", {warning}));
  if (report.error) writeDiagnostic(output.err, report.error.sentence);
  if (!report.error.advice.empty()) output.err << printable(report.error.advice) << '\n';
  return exitStatusOf(report.error.code);
}

ExitStatus finish(const Output& output, const ChangeError& error) {
  ChangeReport report;
  report.error = error;
  return finish(output, report);
}

Json jsonOf(const SettingValue& value) {
  return std::visit([](const auto& held) { return Json(held); }, value);
}

Json damagedJson(const StoredFaults& faults) {
  Json list = Json::array();
  for (const StoredFault& fault : faults) {
    if (!fault.finding.damaged) continue;
    list.push_back({{"file", fault.finding.file},
                    {"reason", fault.reason},
                    {"copy", textOrNull(fault.finding.copyTime)}});
  }
  return list;
}

}  // namespace norvik::command
