// Going into the background.
#include "sandbox/daemon.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace norvik::sandbox {

namespace {

std::system_error failure(const char* what) {
  return {errno, std::generic_category(), what};
}

}  // namespace

sigset_t blockSignals(std::initializer_list<int> signals) {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : signals) sigaddset(&set, signal);
  sigprocmask(SIG_BLOCK, &set, nullptr);
  return set;
}

Daemon::Daemon() {
  // A caller's pipes would stay open for as long as the service runs.
  close_range(STDERR_FILENO + 1, ~0u, 0);
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw failure("pipe");
  const pid_t child = fork();
  if (child < 0) throw failure("fork");
  if (child > 0) {
    close(ends[1]);
    char word = 0;
    ssize_t got = 0;
    while ((got = read(ends[0], &word, 1)) < 0 && errno == EINTR) continue;
    _exit(got == 1 ? 0 : 1);
  }
  close(ends[0]);
  toParent_ = ends[1];
  setsid();
  if (chdir("/") != 0) throw failure("/");
}

void Daemon::ready() {
  const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, standard);
  close(nothing);
  // The parent may have ended meanwhile; the service does not depend on it.
  signal(SIGPIPE, SIG_IGN);
  [[maybe_unused]] ssize_t written = write(toParent_, "+", 1);
  close(toParent_);
}

}  // namespace norvik::sandbox
