// Handlers instead of ignoring: a tool that is launched gets the defaults back.
#include "src/frontends/command/signals.h"

#include <signal.h>

#include <initializer_list>

namespace norvik::command {

namespace {

// What the signal handler may touch, and nothing else.
LinuxRunLoop* watchedLoop = nullptr;
volatile sig_atomic_t noted = 0;
volatile sig_atomic_t stopped = 0;

void noteSignal(int signal) {
  if (signal != SIGPIPE) noted = 1;
  if (signal == SIGINT || signal == SIGTERM) stopped = 1;
  if (watchedLoop != nullptr) watchedLoop->stop();
}

void note(std::initializer_list<int> signals) {
  struct sigaction action {};
  action.sa_handler = noteSignal;
  for (const int signal : signals) sigaction(signal, &action, nullptr);
}

}  // namespace

void deferSignals() {
  note({SIGINT, SIGTERM, SIGHUP, SIGPIPE});
}

void stopOnSignals(LinuxRunLoop& loop) {
  watchedLoop = &loop;
  note({SIGINT, SIGTERM});
}

bool wasInterrupted() {
  return noted != 0;
}

bool wasStopped() {
  return stopped != 0;
}

}  // namespace norvik::command
