// The process services of POSIX, with a clock that runs faster in a sandbox.
#pragma once

#include "src/server/mac/platform/processes.h"

namespace norvik {

class PosixProcessServices : public PosixProcesses {
 public:
  // Every wait is divided by `speed`, which is above 0.
  explicit PosixProcessServices(double speed) : speed_(speed) {}

  KillResult kill(int32_t pid, Signal signal) override;
  int32_t getpid() override;
  void usleep(uint32_t microseconds) override;

 private:
  double speed_;
};

}  // namespace norvik
