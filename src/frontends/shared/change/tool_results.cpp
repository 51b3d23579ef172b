// A table from tools to kinds of failure.
#include "src/frontends/shared/change/tool_results.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "src/server/mac/control/tool_commands.h"

namespace norvik {

namespace {

struct ToolKind {
  const char* tool;
  FailureCode code;
  const char* what;  // could not be done where the tool failed
};
constexpr ToolKind kToolKinds[] = {
    {PROC_NVKSVC, FailureCode::server, "the server did not take up the settings"},
    {PROC_SYSMV, FailureCode::notWritten, "the file could not be put in its place"},
    {PROC_CHMOD, FailureCode::notWritten, "the file's permissions could not be set"},
    {PROC_CHOWN, FailureCode::notWritten, "the file's owner could not be set"},
    {PROC_DEFAULTS, FailureCode::notWritten, "a setting of the system could not be changed"},
    {kRebootTool, FailureCode::server, "the computer was not restarted"},
};
constexpr ToolKind kOtherTool{"", FailureCode::server, "a tool failed"};

const ToolKind& kindOf(std::string_view tool) {
  const auto* found =
      std::ranges::find_if(kToolKinds, [&](const ToolKind& kind) { return kind.tool == tool; });
  return found != std::end(kToolKinds) ? *found : kOtherTool;
}

std::string howItEnded(const ToolOutcome& outcome) {
  if (outcome.end == ToolOutcome::End::killed) {
    const char* name = strsignal(outcome.status);
    return " was ended by a signal (" + std::string(name != nullptr ? name : "unknown") + ")";
  }
  return " failed with exit status " + std::to_string(outcome.status);
}

ChangeError failed(const CommandOutcome& command) {
  const ToolKind& kind = kindOf(command.launch.tool);
  return {kind.code, std::string(kind.what) + ": " + failureInWords(command), "", "", ""};
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

std::string failureInWords(const CommandOutcome& command) {
  const std::string& words = command.outcome.words;
  return commandLine(command.launch) + howItEnded(command.outcome) + (words.empty() ? "." : ": " + words);
}

std::vector<CommandOutcome> outcomesOf(const Effects& effects, const std::vector<ToolOutcome>& tools) {
  std::vector<CommandOutcome> commands;
  auto tool = tools.begin();
  for (const Launch& launch : effects.launches) {
    CommandOutcome command{launch, {launch.tool, launch.arguments, ToolOutcome::End::exited, 0, ""}};
    if (!launch.refused) {
      tool = std::find_if(tool, tools.end(), [&](const ToolOutcome& known) {
        return known.tool == launch.tool && known.arguments == launch.arguments;
      });
      if (tool != tools.end()) command.outcome = *tool++;
    }
    if (!launch.reports) commands.push_back(std::move(command));
  }
  return commands;
}

ChangeError errorOf(const std::vector<CommandOutcome>& commands) {
  const auto first = [&](auto test) {
    const auto found = std::ranges::find_if(commands, test);
    return found != commands.end() ? &*found : nullptr;
  };
  if (const auto* slow =
          first([](const CommandOutcome& c) { return !c.launch.refused && !c.outcome.ended(); })) {
    return {FailureCode::tryAgain,
            commandLine(slow->launch) + " has not ended in time; what comes after it waits for it.", "", "",
            "Look again in a moment whether the change was made."};
  }
  if (const auto* refused = first([](const CommandOutcome& c) { return c.launch.refused; })) {
    return {FailureCode::notAllowed, commandLine(refused->launch) + " could not be run.", "", "", ""};
  }
  if (const auto* bad = first([](const CommandOutcome& c) { return !c.outcome.succeeded(); }))
    return failed(*bad);
  return {};
}

}  // namespace norvik
