// kill, getpid and usleep. An id that would mean a group or all processes to the system is never passed on.
#include "src/adapters/posix/processes.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

namespace norvik {

KillResult PosixProcessServices::kill(int32_t pid, Signal signal) {
  if (pid < 0) return KillResult::noSuchProcess;
  if (pid == 0) return signal == Signal::none ? KillResult::sent : KillResult::otherError;
  if (::kill(pid, signal == Signal::none ? 0 : SIGUSR2) == 0) return KillResult::sent;
  return errno == ESRCH ? KillResult::noSuchProcess : KillResult::otherError;
}

int32_t PosixProcessServices::getpid() {
  return ::getpid();
}

void PosixProcessServices::usleep(uint32_t microseconds) {
  std::this_thread::sleep_for(std::chrono::duration<double, std::micro>(microseconds / speed_));
}

}  // namespace norvik
