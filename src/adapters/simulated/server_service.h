// The service tool of the simulated computer and the server daemon that it starts and stops.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/file_system.h"
#include "src/adapters/simulated/processes.h"

namespace norvik {

class ServerService {
 public:
  ServerService(FileSystem& fileSystem, ProcessTable& processes, SimulatedClock& clock);

  // The daemon runs as that process, or does not run; with its pid file or without one.
  void setDaemon(std::optional<int32_t> pid);
  // Whether the pid file names a process that exists.
  bool daemonRuns() const;

  // How many sleeps of a second after its launch "start" ("stop") has the daemon up (down), 0 meaning at
  // once; none for never. Counts for launches from then on.
  void setStartDelay(std::optional<int64_t> sleeps) { startDelay_ = sleeps; }
  void setStopDelay(std::optional<int64_t> sleeps) { stopDelay_ = sleeps; }
  // The process id of a daemon that comes up.
  void setStartedPid(int32_t pid) { startedPid_ = pid; }

  // A launch of the tool. "start" with a running daemon and every other word do nothing; "stop" takes away
  // what there is, a pid file that nobody left behind included.
  void run(const std::vector<std::string>& arguments);

 private:
  enum class Change { up, down };
  struct Pending {
    Change change;
    int64_t sleeps;
  };

  void schedule(Change change, std::optional<int64_t> sleeps);
  void slept(uint32_t microseconds);
  void take(Change change);
  std::optional<int32_t> pidInFile() const;

  FileSystem& fileSystem_;
  ProcessTable& processes_;
  std::optional<int64_t> startDelay_ = 1;
  std::optional<int64_t> stopDelay_ = 1;
  int32_t startedPid_ = 4321;
  std::vector<Pending> pending_;
};

}  // namespace norvik
