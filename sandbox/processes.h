// The processes of a sandbox: those whose program lies in its root. Reads /proc; signals nobody else.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sandbox/root.h"

namespace norvik::sandbox {

struct Process {
  pid_t pid;
  std::string program;  // its path on the sandbox's computer: "/usr/sbin/nvkserverd"
  uint64_t startTime;   // in clock ticks since the machine started; equal for processes of one tick
};

// All of them but the caller itself, in the order in which they were started.
std::vector<Process> processesOf(const Root& root);

// The daemon, when the pid file names a process that is running and is the daemon of this root. A number that
// is left over, or belongs to another program by now, is nobody.
std::optional<pid_t> runningDaemon(const Root& root);

// Waits until the tools for files (mv, chmod, chown, defaults) that were started before the caller have
// ended. They are launched one after the other by somebody who does not wait for them, and must take effect
// in that order: a file has to be in place before its owner is set or the daemon reads it.
void waitForEarlierFileTools(const Root& root);

}  // namespace norvik::sandbox
