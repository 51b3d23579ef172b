// Stand-in for the server daemon: listens on the ports of its configuration, for this computer alone unless
// the sandbox's file "listen" says "everyone", reads it again on SIGHUP, ends on SIGTERM. Its pid file exists
// exactly while the services do.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <system_error>

#include "sandbox/daemon.h"
#include "sandbox/program.h"
#include "sandbox/services.h"
#include "sandbox/settings.h"
#include "sandbox/waits.h"

namespace norvik::sandbox {
namespace {

// About as long as the real daemon takes to start and to stop.
constexpr std::chrono::milliseconds kStartUpTime(1000);
constexpr std::chrono::milliseconds kShutDownTime(500);

// The lock lasts as long as the process, however it ends, whereas a pid file can be left over.
bool isOnly(const Root& root) {
  const int lock = open(root.own("serverd.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (lock < 0) throw std::system_error(errno, std::generic_category(), "serverd.lock");
  return flock(lock, LOCK_EX | LOCK_NB) == 0;
}

// Listens, with the pid file in place, until a signal to end; on SIGHUP reads the configuration again.
void serve(const Root& root, const sigset_t& signals) {
  const bool isOpen = readFile(root.own("listen")).value_or("") == "everyone\n";
  Listeners listeners(isOpen ? Reachability::everyone : Reachability::thisComputer,
                      [&root](const std::string& line) { logLine(root, "serverd", line); });
  listeners.configure(readSettings(root, kServerConfig));
  replaceFile(root.inside(kPidFile), std::to_string(getpid()) + "\n");
  const int wake = signalfd(-1, &signals, SFD_CLOEXEC);
  while (true) {
    if (!listeners.serve(wake)) continue;
    signalfd_siginfo signal{};
    if (read(wake, &signal, sizeof signal) != sizeof signal) continue;
    if (signal.ssi_signo != SIGHUP) return;
    logLine(root, "serverd", "reads its configuration again");
    listeners.configure(readSettings(root, kServerConfig));
  }
}

int run(const Root& root, const Arguments& arguments) {
  if (!arguments.empty()) return usage("nvkserverd");
  const sigset_t signals = blockSignals({SIGHUP, SIGTERM, SIGINT});
  Daemon daemon;
  if (!isOnly(root)) {
    logLine(root, "serverd", "is already running");
    daemon.ready();
    return 0;
  }
  daemon.ready();
  logLine(root, "serverd", "starts");
  waitFor(root, kStartUpTime);
  serve(root, signals);
  logLine(root, "serverd", "stops");
  waitFor(root, kShutDownTime);
  std::filesystem::remove(root.inside(kPidFile));
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
