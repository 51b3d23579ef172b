// The processes of a sandbox: those whose program is in its root. Reads /proc.
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

// The daemon, when the pid file names a running process that is the daemon of this root; nothing for a number
// that is left over or belongs to another program by now.
std::optional<pid_t> runningDaemon(const Root& root);

// Waits until the file tools (mv, chmod, chown, defaults) that were started before the caller have ended.
// They are launched one after the other without waiting, and must take effect in that order: a file has to be
// in place before its owner is set or the daemon reads it.
void waitForEarlierFileTools(const Root& root);

}  // namespace norvik::sandbox
