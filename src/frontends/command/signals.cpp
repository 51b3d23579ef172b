// Handlers instead of ignoring: a tool that is launched gets the defaults back.
#include "src/frontends/command/signals.h"

#include <signal.h>

#include <initializer_list>

namespace norvik::command {

namespace {

volatile sig_atomic_t noted = 0;
volatile sig_atomic_t stopped = 0;

void noteSignal(int signal) {
  if (signal != SIGPIPE) noted = 1;
  if (signal == SIGINT || signal == SIGTERM) stopped = 1;
}

}  // namespace

void deferSignals() {
  struct sigaction action {};
  action.sa_handler = noteSignal;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) sigaction(signal, &action, nullptr);
}

bool wasInterrupted() {
  return noted != 0;
}

bool wasStopped() {
  return stopped != 0;
}

}  // namespace norvik::command
