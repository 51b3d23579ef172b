// Going into the background: a program that its caller may wait for and that has a process behind it when the
// wait is over.
#pragma once

#include <signal.h>

#include <initializer_list>

namespace norvik::sandbox {

// Blocks the signals, for this process and those that it starts, and answers their set. To be called first,
// so that a signal which comes early waits to be fetched.
sigset_t blockSignals(std::initializer_list<int> signals);

class Daemon {
 public:
  // Goes on in a new process in a session of its own. The old one ends when the new one is ready, with status
  // 0, or when it ends without having been, with status 1. Throws std::system_error when there can be no new
  // one.
  Daemon();

  // Says that the service is there, lets go of the terminal and of everything else that was inherited.
  void ready();

 private:
  int toParent_;
};

}  // namespace norvik::sandbox
