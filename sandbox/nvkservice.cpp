// Stand-in for the service tool: starts and stops the daemon, has it read its configuration again, and in
// place of the two management tools says what would open.
#include <signal.h>

#include <algorithm>
#include <iostream>

#include "sandbox/processes.h"
#include "sandbox/program.h"
#include "sandbox/waits.h"

namespace norvik::sandbox {
namespace {

constexpr std::chrono::seconds kLimit(15);
constexpr const char* kUsage =
    "nvkservice start [-f] [-w] | stop [-w] | apply | dspcmd manage | admcmd manage\n"
    "  -f  start in any case; it does so anyway\n"
    "  -w  wait until it is done";

int say(const Root& root, const std::string& line, int status) {
  logLine(root, "service", line);
  (status == 0 ? std::cout : std::cerr) << "nvkservice: " << line << std::endl;
  return status;
}

int start(const Root& root, bool wait) {
  if (runningDaemon(root)) return say(root, "start: the daemon is already running", 0);
  if (runAndWait(root, root.inside(kServerDaemon)) != 0)
    return say(root, "start: the daemon cannot be started", 1);
  if (wait && !waitUntil(kLimit, [&] { return runningDaemon(root).has_value(); }))
    return say(root, "start: the daemon did not come up", 1);
  return say(root, wait ? "start: the daemon is running" : "start: the daemon was started", 0);
}

int stop(const Root& root, bool wait) {
  const auto daemon = runningDaemon(root);
  if (!daemon) return say(root, "stop: the daemon is not running", 0);
  if (kill(*daemon, SIGTERM) != 0) return say(root, "stop: the daemon cannot be signalled", 1);
  if (wait && !waitUntil(kLimit, [&] { return !runningDaemon(root); }))
    return say(root, "stop: the daemon did not go down", 1);
  return say(root, wait ? "stop: the daemon has ended" : "stop: the daemon was asked to end", 0);
}

int apply(const Root& root) {
  const auto daemon = runningDaemon(root);
  // It reads the new configuration when it starts.
  if (!daemon) return say(root, "apply: the daemon is not running", 0);
  if (kill(*daemon, SIGHUP) != 0) return say(root, "apply: the daemon cannot be signalled", 1);
  return say(root, "apply: the daemon was asked to read its configuration again", 0);
}

bool onlyOptions(const Arguments& arguments, std::string_view allowed) {
  return std::all_of(arguments.begin() + 1, arguments.end(), [allowed](const std::string& word) {
    return word.size() == 2 && word[0] == '-' && allowed.find(word[1]) != std::string_view::npos;
  });
}

int run(const Root& root, const Arguments& arguments) {
  if (arguments.empty()) return usage(kUsage);
  const std::string& verb = arguments[0];
  const bool wait = std::find(arguments.begin(), arguments.end(), "-w") != arguments.end();
  const bool manages = arguments.size() == 2 && arguments[1] == "manage";
  waitForEarlierFileTools(root);
  if (verb == "start" && onlyOptions(arguments, "fw")) return start(root, wait);
  if (verb == "stop" && onlyOptions(arguments, "w")) return stop(root, wait);
  if (verb == "apply" && arguments.size() == 1) return apply(root);
  if (verb == "dspcmd" && manages) return say(root, "dspcmd manage: the display manager would open", 0);
  if (verb == "admcmd" && manages) return say(root, "admcmd manage: the access manager would open", 0);
  return usage(kUsage);
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
