// Signal handlers for the time of an order.
#include "src/frontends/command/order_signals.h"

#include <signal.h>

#include <array>

namespace norvik::command {

namespace {

volatile sig_atomic_t noted = 0;

void note(int /*signal*/) {
  noted = 1;
}

struct Handled {
  int signal;
  void (*handler)(int);
};
const Handled kHandled[] = {{SIGHUP, SIG_IGN}, {SIGPIPE, SIG_IGN}, {SIGINT, note}, {SIGTERM, note}};

std::array<struct sigaction, std::size(kHandled)> before;

}  // namespace

OrderSignals::OrderSignals() {
  noted = 0;
  for (std::size_t i = 0; i < std::size(kHandled); ++i) {
    struct sigaction action {};
    action.sa_handler = kHandled[i].handler;
    sigaction(kHandled[i].signal, &action, &before[i]);
  }
}

OrderSignals::~OrderSignals() {
  for (std::size_t i = 0; i < std::size(kHandled); ++i) sigaction(kHandled[i].signal, &before[i], nullptr);
}

bool OrderSignals::interrupted() {
  return noted != 0;
}

void InterruptibleDrawing::display(Control& control) {
  drawing_.display(control);
  if (OrderSignals::interrupted()) throw Interruption();
}

}  // namespace norvik::command
