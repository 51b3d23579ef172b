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
  // Installs the tool.
  ServerService(FileSystem& fileSystem, ProcessTable& processes, SimulatedClock& clock);

  // The daemon runs as that process with its pid file, or does not run and has none.
  void setDaemon(std::optional<int32_t> pid);
  // Whether the pid file names a process that exists.
  bool daemonRuns() const { return runningPid().has_value(); }
  // That process; nothing where there is none.
  std::optional<int32_t> runningPid() const;
  // How often the daemon has read its settings: when it came up, and for each "apply" while it runs.
  int settingsReads() const { return settingsReads_; }

  // How many sleeps of a second after the launch of "start" ("stop") the daemon is up (down), immediately for
  // 0; none for never. Applies to later launches.
  void setStartDelay(std::optional<int64_t> sleeps) { startDelay_ = sleeps; }
  void setStopDelay(std::optional<int64_t> sleeps) { stopDelay_ = sleeps; }
  // The process id of a daemon that starts.
  void setStartedPid(int32_t pid) { startedPid_ = pid; }

  // A launch of the tool. "start" with a running daemon and every other word do nothing; "stop" removes
  // whatever is there, even a pid file without a daemon.
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
  int settingsReads_ = 0;
  std::vector<Pending> pending_;
};

}  // namespace norvik
