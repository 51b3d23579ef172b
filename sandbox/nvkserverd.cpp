// The server daemon's stand-in: listens on the ports of its configuration, re-reads it on SIGHUP, ends on
// SIGTERM. Its pid file is there exactly while the services are.
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

// What a daemon of its size takes to come up and to go down.
constexpr std::chrono::milliseconds kStartUpTime(1000);
constexpr std::chrono::milliseconds kShutDownTime(500);

// Held for as long as the process lives, however it ends; the pid file alone could be left over.
bool isOnly(const Root& root) {
  int lock = open(root.own("serverd.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (lock < 0) throw std::system_error(errno, std::generic_category(), "serverd.lock");
  return flock(lock, LOCK_EX | LOCK_NB) == 0;
}

// Listens, and has the pid file say so, until a signal to end; SIGHUP has the configuration read again.
void serve(const Root& root, const sigset_t& signals) {
  Listeners listeners([&root](const std::string& line) { logLine(root, "serverd", line); });
  listeners.configure(readSettings(root, kServerConfig));
  replaceFile(root.inside(kPidFile), std::to_string(getpid()) + "\n");
  int wake = signalfd(-1, &signals, SFD_CLOEXEC);
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
  sigset_t signals = blockSignals({SIGHUP, SIGTERM, SIGINT});
  Daemon daemon;
  if (!isOnly(root)) {
    logLine(root, "serverd", "runs already");
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
