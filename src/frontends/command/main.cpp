// norvikctl: everything that the settings panel does, for a person or a script without a screen. Reads the
// command line, puts the computer together, and calls the command.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>

#include "src/adapters/linux/linux_computer.h"
#include "src/frontends/command/application.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/diagnostic.h"
#include "src/frontends/command/guarded.h"
#include "src/frontends/command/help.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/signals.h"
#include "src/frontends/command/standard_streams.h"
#include "src/frontends/command/stored_faults.h"
#include "src/frontends/command/trial.h"
#include "src/frontends/shared/checks/port_in_use.h"
#include "src/frontends/shared/history/history.h"
#include "src/frontends/shared/interface/shipped_interface.h"
#include "src/frontends/shared/interface/unread_settings.h"
#include "src/frontends/shared/language/choice.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/translated_interface.h"

namespace norvik::command {
namespace {

void repeatUntilInterrupted(LinuxRunLoop& loop, std::chrono::milliseconds time,
                            const std::function<bool()>& pass) {
  stopOnSignals(loop);
  while (!wasInterrupted() && pass()) loop.runFor(time);
}

// A trial passes as fast as the waits of the computer do.
std::chrono::milliseconds timeAt(double speed) {
  const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now * speed);
}

// The computer with all platform interfaces, some of them the terminal's.
struct Installation {
  explicit Installation(const LinuxComputerOptions& options) : speed(options.speed), computer(options) {}

  double speed;  // of the computer's clock
  LinuxComputer computer;
  History history{computer.userState, "norvikctl"};
  TerminalApplication application;
  TerminalWorkspace workspace{std::cout};
  Questions noQuestions{Answers(), std::cerr};
  Progress noProgress{nullptr};
  Platform platform = computer.platformFor({application, noQuestions, workspace, computer.notifications,
                                            noProgress, computer.runLoop, computer.posix});

  Services services() {
    return {[this](std::chrono::milliseconds limit) { return computer.waitForTools(limit); },
            [this](std::chrono::milliseconds time, const std::function<bool()>& pass) {
              repeatUntilInterrupted(computer.runLoop, time, pass);
            },
            typedLine,
            [this] { return timeAt(speed); },
            portInUse,
            computer.services(),
            computer.userState,
            history,
            deferSignals,
            wasInterrupted,
            wasStopped};
  }
  Context context(const InterfaceDescription& interface, const CommandLine& line) {
    const Answers answers{line.answers, false, personAtTerminal()};
    return {platform,        interface, services(), std::cout,          std::cerr,
            watchedOutput(), line.json, answers,    line.command->name, line.limits};
  }
};

Output outputOf(const CommandLine& line) {
  return {std::cout, std::cerr, line.json, line.command != nullptr ? line.command->name : ""};
}

// Why no sandbox can be worked on in this folder; empty where one can.
std::string wrongRoot(const std::string& folder) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return sentence("no such directory: \"{1}\".", {folder});
  return isSandbox(folder) ? "" : sentence("\"{1}\" is not a sandbox.", {folder});
}

LinuxComputerOptions optionsFor(const CommandLine& line) {
  LinuxComputerOptions options = line.root ? sandboxOptions(*line.root) : systemOptions();
  options.syslogIdent = "norvikctl";
  options.textAgent = true;
  return options;
}

// Says why rights were not granted, where the system says so.
ExitStatus explained(ExitStatus status, const AuthorizationRefusals& refusals) {
  const std::string why = translated(sentenceOf(refusals.lastRefusal()));
  if (status == kExitNoPermission && !why.empty()) writeDiagnostic(std::cerr, why);
  return status;
}

ExitStatus runOnComputer(const CommandLine& line) {
  const std::string wrong = line.root ? wrongRoot(*line.root) : "";
  if (!wrong.empty()) return finish(outputOf(line), failure(FailureCode::usage, wrong));
  std::string damage;
  const auto interface = shippedInterface(damage);
  if (!interface) {
    return finish(outputOf(line), failure(FailureCode::software,
                                          sentence("the interface description is damaged: {1}", {damage})));
  }
  Installation installation(optionsFor(line));
  const InterfaceDescription shown =
      withUnreadSaid(translatedInterface(*interface), installation.computer.services().unreadFiles);
  Context context = installation.context(shown, line);
  if (!line.help) {
    if (line.command->use >= SettingsUse::reads && !line.dryRun) takeBackAbandoned(context);
    if (line.command->use >= SettingsUse::reads) context.faults = storedFaults(context);
    if (context.faults) writeWarnings(std::cerr, *context.faults);
    return explained(line.command->run(context, line), installation.computer.services().refusals);
  }
  writeHelp(std::cout, *line.command, shownSettings(context));
  return kExitOk;
}

ExitStatus showVersion(const CommandLine& line) {
  if (!line.json) std::cout << "norvikctl " NORVIK_VERSION "\n";
  return finish(outputOf(line), ChangeReport(), {{"version", NORVIK_VERSION}});
}

ExitStatus run(const CommandLine& line) {
  if (line.version) return showVersion(line);
  if (!line.help || (line.command != nullptr && listsSettings(*line.command))) return runOnComputer(line);
  if (line.command == nullptr) {
    writeHelp(std::cout);
  } else {
    writeHelp(std::cout, *line.command, {});
  }
  return kExitOk;
}

ExitStatus refuse(const CommandLine& line, const std::string& fault) {
  ChangeError error = failure(FailureCode::usage, fault);
  error.advice = translated("Try \"norvikctl --help\".");
  return finish(outputOf(line), error);
}

ExitStatus run(const std::vector<std::string>& words) {
  std::string fault;
  const CommandLine line = parseCommandLine(words, fault);
  return guarded(outputOf(line), [&] { return fault.empty() ? run(line) : refuse(line, fault); });
}

// Before the line is read, for which there may be too little memory.
bool isForScript(char** begin, char** end) {
  return std::any_of(begin, end, [](const char* word) { return std::string_view(word) == "--json"; });
}

// What a script reads is English whatever the person's language: its sentences are compared and stored.
void chooseLanguageFor(bool script) {
  if (!script) chooseLanguage(wantedLanguages());
}

// A command that failed keeps its own status.
ExitStatus checkOutput(ExitStatus status) {
  if (flushOutput() || status != kExitOk) return status;
  writeDiagnostic(std::cerr, translated("the output could not be written."));
  return kExitIo;
}

}  // namespace
}  // namespace norvik::command

int main(int argc, char** argv) {
  using namespace norvik::command;
  fillClosedStreams();
  char** const words = argv + std::min(argc, 1);
  const bool isJson = isForScript(words, argv + argc);
  const norvik::command::Output output{std::cout, std::cerr, isJson, ""};
  return checkOutput(guarded(output, [&] {
    chooseLanguageFor(isJson);
    return run({words, argv + argc});
  }));
}
