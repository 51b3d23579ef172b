// Going into the background: the caller waits until the process in the background is ready.
#pragma once

#include <signal.h>

#include <initializer_list>

namespace norvik::sandbox {

// Blocks the signals, for this process and those that it starts, and returns their set. Call it first, so
// that a signal that comes early stays pending.
sigset_t blockSignals(std::initializer_list<int> signals);

class Daemon {
 public:
  // Continues in a new process in its own session. The old one ends with status 0 when the new one is ready,
  // or with status 1 when that ends before. Throws std::system_error when no process can be made.
  Daemon();

  // Reports that the service is ready, and closes the terminal and everything else that was inherited.
  void ready();

 private:
  int toParent_;
};

}  // namespace norvik::sandbox
