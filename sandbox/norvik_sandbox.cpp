// norvik-sandbox: creates a root folder that represents a whole computer, starts what runs there from log-in
// on, shows what runs, and ends all of it.
#include <signal.h>

#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "sandbox/bus.h"
#include "sandbox/daemon.h"
#include "sandbox/layout.h"
#include "sandbox/processes.h"
#include "sandbox/program.h"
#include "sandbox/waits.h"

namespace norvik::sandbox {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUsage =
    "norvik-sandbox start DIR [--speed FACTOR] | stop DIR | status DIR\n"
    "  start    creates a sandbox in DIR, unless it is one already, and starts what is not running\n"
    "  stop     ends every process of the sandbox; its files stay\n"
    "  status   shows what is running\n"
    "  --speed  how many times faster than real time the sandbox runs (1)";

// What runs from log-in on; not the daemon, which the pane starts.
constexpr const char* kAtLogIn[] = {"/Applications/Norvik Agent.app/Contents/MacOS/nvkagent",
                                    "/Applications/Norvik Menu Agent.app/Contents/MacOS/nvkmenua"};

// The stand-ins are beside this program.
fs::path programsFolder() {
  const fs::path here = fs::read_symlink("/proc/self/exe").parent_path();
  if (fs::exists(here / "sandbox/nvkserverd")) return here / "sandbox";
  throw std::runtime_error("no stand-ins near " + here.string());
}

std::optional<pid_t> running(const Root& root, std::string_view program) {
  for (const Process& process : processesOf(root))
    if (process.program == program) return process.pid;
  return std::nullopt;
}

int start(const fs::path& folder, std::optional<double> factor) {
  const Root root = createSandbox(folder, programsFolder());
  if (factor) {
    std::ostringstream text;
    text << *factor << "\n";
    replaceFile(root.own("clock"), text.str());
  }
  startBus(root);
  // The agents inherit this: a signal that asks them to read their settings again waits until they can.
  blockSignals({SIGUSR2});
  for (const char* program : kAtLogIn) {
    if (running(root, program)) continue;
    if (runAndWait(root, root.inside(program)) != 0)
      throw std::runtime_error("cannot start " + std::string(program));
  }
  return 0;
}

std::vector<pid_t> processIds(const Root& root) {
  std::vector<pid_t> ids;
  for (const Process& process : processesOf(root)) ids.push_back(process.pid);
  return ids;
}

std::vector<pid_t> busIds(const Root& root) {
  const auto bus = runningBus(root);
  return bus ? std::vector<pid_t>{*bus} : std::vector<pid_t>{};
}

// Ends processes, by force those that do not end when asked.
void end(const Root& root, std::vector<pid_t> (*idsOf)(const Root&)) {
  constexpr std::chrono::seconds kLimit(5);
  for (const int signal : {SIGTERM, SIGKILL}) {
    for (const pid_t id : idsOf(root)) kill(id, signal);
    if (waitUntil(kLimit, [&] { return idsOf(root).empty(); })) return;
  }
  throw std::runtime_error("cannot end every process of the sandbox");
}

int stop(const Root& root) {
  end(root, processIds);
  // The bus ends last: programs connected to it should end because they are asked, not because it is gone.
  end(root, busIds);
  // Left over by processes that were killed.
  fs::remove(root.inside(kPidFile));
  fs::remove(root.own("bus.socket"));
  fs::remove(root.own("bus"));
  return 0;
}

void print(std::string_view name, std::optional<pid_t> pid) {
  std::cout << name << " " << (pid ? "runs, process " + std::to_string(*pid) : "does not run") << "\n";
}

int status(const Root& root) {
  print("bus", runningBus(root));
  for (const char* program : kAtLogIn) print(fs::path(program).filename().string(), running(root, program));
  print("nvkserverd", runningDaemon(root));
  std::cout << "speed " << speed(root) << "\n";
  return 0;
}

int run(const Arguments& arguments) {
  if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
    std::cout << "usage: " << kUsage << "\n";
    return 0;
  }
  if (arguments.size() < 2 || arguments[1].starts_with("-")) return usage(kUsage);
  const std::string& verb = arguments[0];
  fs::path folder = arguments[1];
  if (verb == "start") {
    const bool hasSpeed = arguments.size() == 4 && arguments[2] == "--speed";
    const auto factor = hasSpeed ? parseSpeed(arguments[3]) : std::nullopt;
    if (arguments.size() != 2 && !factor) return usage(kUsage);
    return start(folder, factor);
  }
  if (arguments.size() != 2 || (verb != "stop" && verb != "status")) return usage(kUsage);
  const auto root = Root::in(folder);
  if (!root) throw std::runtime_error(folder.string() + ": not a sandbox");
  return verb == "stop" ? stop(*root) : status(*root);
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  try {
    return norvik::sandbox::run(norvik::sandbox::Arguments(argv + 1, argv + argc));
  } catch (const std::exception& failure) {
    std::cerr << "norvik-sandbox: " << failure.what() << "\n";
    return 1;
  }
}
