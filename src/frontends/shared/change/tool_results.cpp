// A table from tools to kinds of failure.
#include "src/frontends/shared/change/tool_results.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"

namespace norvik {

namespace {

struct ToolKind {
  const char* tool;
  FailureCode code;
  const char* what;    // could not be done where the tool failed
  const char* advice;  // what to do next
};
// clang-format off
constexpr ToolKind kToolKinds[] = {
    {PROC_NVKSVC,   FailureCode::server,     english("The server did not take up the settings"),  english("Check that the server is installed and runs, then try again.")},
    {PROC_SYSMV,    FailureCode::notWritten, english("The file could not be put in its place"),   english("Check the disk and the folder, then apply again.")},
    {PROC_CHMOD,    FailureCode::notWritten, english("The file's permissions could not be set"),  english("Set them by hand, or change a setting and apply again.")},
    {PROC_CHOWN,    FailureCode::notWritten, english("The file's owner could not be set"),        english("Set it by hand, or change a setting and apply again.")},
    {PROC_DEFAULTS, FailureCode::notWritten, english("A setting of the system was not changed"),  english("Apply again.")},
    {kRebootTool,   FailureCode::server,     english("The computer was not restarted"),           english("Restart it yourself.")},
};
// clang-format on
constexpr ToolKind kOtherTool{"", FailureCode::server, english("A command failed"), english("Try again.")};

const ToolKind& kindOf(std::string_view tool) {
  const auto* found =
      std::ranges::find_if(kToolKinds, [&](const ToolKind& kind) { return kind.tool == tool; });
  return found != std::end(kToolKinds) ? *found : kOtherTool;
}

std::string howItEnded(const std::string& command, const ToolOutcome& outcome) {
  if (outcome.end == ToolOutcome::End::killed) {
    const char* name = strsignal(outcome.status);
    return sentence("{1} was ended by a signal ({2})",
                    {command, name != nullptr ? name : translated("unknown")});
  }
  return sentence("{1} failed with exit status {2}", {command, std::to_string(outcome.status)});
}

ChangeError failed(const CommandOutcome& command) {
  const ToolKind& kind = kindOf(command.launch.tool);
  return {kind.code, sentence("{1}: {2}", {translated(kind.what), failureInWords(command)}), "", "",
          translated(kind.advice)};
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
  std::string said = howItEnded(commandLine(command.launch), command.outcome);
  if (!words.empty()) said = sentence("{1}: {2}", {said, words});
  return said.back() == '.' ? said : sentence("{1}.", {said});
}

std::vector<CommandOutcome> outcomesOf(const Effects& effects, const std::vector<ToolOutcome>& tools) {
  std::vector<CommandOutcome> commands;
  auto tool = tools.begin();
  for (const Launch& launch : effects.launches) {
    CommandOutcome command{launch, {launch.tool, launch.arguments, ToolOutcome::End::exited, 0, ""}};
    if (!launch.refused) {
      const auto found = std::find_if(tool, tools.end(), [&](const ToolOutcome& known) {
        return known.tool == launch.tool && known.arguments == launch.arguments;
      });
      if (found != tools.end()) {
        command.outcome = *found;
        tool = std::next(found);
      }
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
            sentence("The command {1} has not ended in time; what comes after it waits for it.",
                     {commandLine(slow->launch)}),
            "", "", translated("Look again in a moment whether the change was made.")};
  }
  if (const auto* refused = first([](const CommandOutcome& c) { return c.launch.refused; })) {
    return {FailureCode::notAllowed,
            sentence("The system refused to run the command {1}.", {commandLine(refused->launch)}), "", "",
            translated("Close and open the lock, then try again.")};
  }
  if (const auto* bad = first([](const CommandOutcome& c) { return !c.outcome.succeeded(); }))
    return failed(*bad);
  return {};
}

}  // namespace norvik
