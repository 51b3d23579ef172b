// norvik-sandbox: lays out a root folder that stands for a whole computer, starts what runs there at log-in,
// says what runs, and ends all of it.
#include <signal.h>

#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "sandbox/bus.h"
#include "sandbox/layout.h"
#include "sandbox/processes.h"
#include "sandbox/program.h"
#include "sandbox/waits.h"

namespace norvik::sandbox {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUsage =
    "norvik-sandbox start DIR [--speed FACTOR] | stop DIR | status DIR\n"
    "  start   lays out a sandbox in DIR, new, empty or a sandbox already, and starts what is not running\n"
    "  stop    ends every process of the sandbox; its files stay\n"
    "  status  says what runs\n"
    "  --speed how many times faster than real the sandbox waits (1)";

// What runs from log-in on. The daemon is not among them: the pane starts it.
constexpr const char* kAtLogIn[] = {"/Applications/Norvik Agent.app/Contents/MacOS/nvkagent",
                                    "/Applications/Norvik Menu Agent.app/Contents/MacOS/nvkmenua"};

// The stand-ins lie beside this program where it was built, and apart from the commands of the same names
// where it is installed.
fs::path programsFolder() {
  fs::path here = fs::read_symlink("/proc/self/exe").parent_path();
  for (const fs::path& folder : {here / "sandbox", here.parent_path() / "libexec/norvik/sandbox"})
    if (fs::exists(folder / "nvkserverd")) return folder;
  throw std::runtime_error("the stand-ins are not to be found near " + here.string());
}

std::optional<pid_t> running(const Root& root, std::string_view program) {
  for (const Process& process : processesOf(root))
    if (process.program == program) return process.pid;
  return std::nullopt;
}

int start(const fs::path& folder, std::optional<double> factor) {
  Root root = layOut(folder, programsFolder());
  if (factor) {
    std::ostringstream text;
    text << *factor << "\n";
    replaceFile(root.own("clock"), text.str());
  }
  startBus(root);
  for (const char* program : kAtLogIn) {
    if (running(root, program)) continue;
    if (runAndWait(root, root.inside(program)) != 0)
      throw std::runtime_error(std::string(program) + ": cannot be started");
  }
  return 0;
}

std::vector<pid_t> processIds(const Root& root) {
  std::vector<pid_t> ids;
  for (const Process& process : processesOf(root)) ids.push_back(process.pid);
  return ids;
}

std::vector<pid_t> busIds(const Root& root) {
  auto bus = runningBus(root);
  return bus ? std::vector<pid_t>{*bus} : std::vector<pid_t>{};
}

// Ends processes, with force those that do not end when they are told.
void end(const Root& root, std::vector<pid_t> (*idsOf)(const Root&)) {
  constexpr std::chrono::seconds kLimit(5);
  for (int signal : {SIGTERM, SIGKILL}) {
    for (pid_t id : idsOf(root)) kill(id, signal);
    if (waitUntil(kLimit, [&] { return idsOf(root).empty(); })) return;
  }
  throw std::runtime_error("some processes do not end");
}

int stop(const Root& root) {
  end(root, processIds);
  // The bus goes last: who is connected to it should end by being told, not by losing it.
  end(root, busIds);
  // What a killed process leaves behind.
  fs::remove(root.inside(kPidFile));
  fs::remove(root.own("bus.socket"));
  fs::remove(root.own("bus"));
  return 0;
}

void tell(std::string_view name, std::optional<pid_t> pid) {
  std::cout << name << " " << (pid ? "runs, process " + std::to_string(*pid) : "does not run") << "\n";
}

int status(const Root& root) {
  tell("bus", runningBus(root));
  for (const char* program : kAtLogIn) tell(fs::path(program).filename().string(), running(root, program));
  tell("nvkserverd", runningDaemon(root));
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
    bool hasSpeed = arguments.size() == 4 && arguments[2] == "--speed";
    auto factor = hasSpeed ? parseSpeed(arguments[3]) : std::nullopt;
    if (arguments.size() != 2 && !factor) return usage(kUsage);
    return start(folder, factor);
  }
  if (arguments.size() != 2 || (verb != "stop" && verb != "status")) return usage(kUsage);
  auto root = Root::in(folder);
  if (!root) throw std::runtime_error(folder.string() + ": is no sandbox");
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
