// norvikctl: everything that the settings panel does, for a person or a script without a screen. Puts the
// computer together, reads the command line, and calls the command.
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "src/adapters/linux/linux_computer.h"
#include "src/frontends/command/application.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/commands.h"
#include "src/frontends/command/completion.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/shared/checks/port_in_use.h"
#include "src/frontends/shared/interface/shipped_interface.h"

namespace norvik::command {
namespace {

// What ends a watch; the handler may touch nothing else.
LinuxRunLoop* watchedLoop = nullptr;
volatile sig_atomic_t interrupted = 0;

void interrupt(int /*signal*/) {
  interrupted = 1;
  if (watchedLoop != nullptr) watchedLoop->stop();
}

void stopOnSignals(LinuxRunLoop& loop) {
  watchedLoop = &loop;
  struct sigaction action {};
  action.sa_handler = interrupt;
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

Services servicesOf(LinuxComputer& computer) {
  return {[&](std::chrono::milliseconds limit) { return computer.waitForTools(limit); },
          [&](std::chrono::milliseconds time) {
            if (interrupted == 0) computer.runLoop.runFor(time);
            return interrupted == 0;
          },
          portInUse};
}

// Somebody who can read a question and type an answer.
std::istream* personAtTerminal() {
  return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0 ? &std::cin : nullptr;
}

ExitStatus dispatch(const Context& context, const CommandLine& line) {
  const std::string& command = line.command;
  const std::string first = line.words.empty() ? "" : line.words.front();
  if (command == "status") return showStatus(context);
  if (command == "show") return showSettings(context, first);
  if (command == "get") return getSettings(context, line.words);
  if (command == "set") return setSettings(context, line.words, line.dryRun);
  if (command == "start") return orderServer(context, ServerOrder::start);
  if (command == "stop") return orderServer(context, ServerOrder::stop);
  if (command == "restart") return orderServer(context, ServerOrder::restart);
  if (command == "limits") return openFilesLimit(context, first);
  if (command == "displays") return openTool(context, ManagementTool::displays);
  if (command == "access") return openTool(context, ManagementTool::access);
  return watch(context);
}

// The computer with all its ports, of which the terminal has some and the system the others.
struct Installation {
  explicit Installation(const LinuxComputerOptions& options) : computer(options) {}

  LinuxComputer computer;
  TerminalApplication application;
  TerminalWorkspace workspace{std::cout};
  Questions nobody{{}, std::cerr};
  Progress unseen{nullptr};
  Platform platform = computer.platformFor(
      {application, nobody, workspace, computer.notifications, unseen, computer.runLoop, computer.posix});

  Context context(const InterfaceDescription& interface, const CommandLine& line) {
    const Answers answers{line.answer, line.answer ? nullptr : personAtTerminal()};
    return {platform, interface, servicesOf(computer), std::cout, std::cerr, line.json, answers};
  }
};

ExitStatus runOnComputer(const CommandLine& line, const InterfaceDescription& interface) {
  LinuxComputerOptions options = line.root.empty() ? systemOptions() : sandboxOptions(line.root);
  options.syslogIdent = "norvikctl";
  Installation installation(options);
  if (line.command == "watch") stopOnSignals(installation.computer.runLoop);
  return dispatch(installation.context(interface, line), line);
}

// Which settings there are is known when a pane has awoken, as it hides some.
std::vector<SettingDescription> shownSettings(const InterfaceDescription& interface) {
  Installation installation(systemOptions());
  const Context context = installation.context(interface, {});
  Session session(context, installation.nobody, installation.unseen, Mode::pretending);
  std::vector<SettingDescription> settings;
  for (const PaneSetting& setting : session.settings()) settings.push_back(setting.description());
  return settings;
}

int run(int argc, char** argv) {
  std::string damage;
  const auto interface = shippedInterface(damage);
  if (!interface) {
    std::cerr << "norvikctl: the interface description is damaged: " << damage << '\n';
    return kExitSoftware;
  }
  ExitStatus status = kExitOk;
  const SettingsSource settings = [&] { return shownSettings(*interface); };
  const auto line = parseCommandLine(argc, argv, settings, std::cout, std::cerr, status);
  if (!line) return status;
  if (line->command == "completion") {
    std::cout << bashCompletion(settings());
    return kExitOk;
  }
  std::error_code error;
  if (!line->root.empty() && !std::filesystem::is_directory(line->root, error)) {
    std::cerr << "norvikctl: there is no folder \"" << line->root << "\".\n";
    return kExitUsage;
  }
  return runOnComputer(*line, *interface);
}

}  // namespace
}  // namespace norvik::command

int main(int argc, char** argv) {
  return norvik::command::run(argc, argv);
}
