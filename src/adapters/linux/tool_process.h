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
  Descriptor output;                      // its standard output; without one it is discarded
  Descriptor earlier;                     // a process to wait for first; may be none
  std::chrono::milliseconds longestWait;  // for that end
};

// Forks a child that becomes the tool and returns at once; returns its process id, or -1. The child inherits
// nothing of the program but what `tool` gives it: default signals, its own session, "/" as working folder,
// no other descriptors. This is so even while it waits for the earlier process.
pid_t startProcess(const ToolProcess& tool);

// A copy of the descriptor that is not one of the first three, which the child replaces; none for none.
Descriptor aboveStandardStreams(const Descriptor& descriptor);

}  // namespace norvik
