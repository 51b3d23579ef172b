// One tool as a child process: what it is given, and the fork and exec that make it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "src/adapters/linux/descriptors.h"

namespace norvik {

struct ToolProcess {
  std::string program;                    // on the disk
  std::vector<std::string> words;         // its name and its arguments
  std::vector<std::string> environment;   // all of it, NAME=VALUE
  Descriptor output;                      // its standard output; none for nowhere
  Descriptor earlier;                     // a process to let end first; none for none
  std::chrono::milliseconds longestWait;  // for that end
};

// Forks a child that becomes the tool, and returns at once; its process id, or -1. The child has nothing of
// the host but what `tool` gives it: signals as they are by default, a session of its own, "/" as working
// folder, no other descriptors, from before it waits for the earlier process on.
pid_t startProcess(const ToolProcess& tool);

// A copy of the descriptor that is none of the first three, which the child gives another meaning; none for
// none.
Descriptor aboveStandardStreams(const Descriptor& descriptor);

}  // namespace norvik
