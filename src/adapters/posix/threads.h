// Threads of an adapter inside a program that has signal handlers of its own.
#pragma once

#include <pthread.h>

#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

namespace norvik {

// Starts a thread that receives none of the program's signals and that nobody joins; false if none can be
// made.
template <typename Body>
bool startThread(Body body) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  bool started = true;
  try {
    std::thread(std::move(body)).detach();
  } catch (const std::system_error&) {
    started = false;
  }
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return started;
}

}  // namespace norvik
