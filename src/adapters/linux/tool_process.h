// One tool as a process, and the process that looks after it: what they are given, and what is reported of
// the tool's end.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

struct ToolProcess {
  std::string program;                                   // on the disk
  std::vector<std::string> words;                        // its name and its arguments
  std::vector<std::string> environment;                  // all of it, NAME=VALUE
  Descriptor output;                                     // its standard output; without one it is discarded
  Descriptor earlier;                                    // a process to wait for first; may be none
  std::optional<std::chrono::milliseconds> longestWait;  // for that end; none for as long as it takes
  Descriptor held;    // to be kept open until the tool has ended; may be none
  Descriptor report;  // the writing end of a pipe for the report
};

// What became of a tool.
struct ToolEnd {
  int status = 0;     // as waitpid gives it
  std::string words;  // the beginning of its standard error, as it is
};

// Forks a child that looks after the tool, and returns at once; returns the child's process id, or -1. The
// child waits for the earlier process, starts the tool, keeps what the tool says, reports its end and ends
// itself. It does so even if the program ends first. It inherits nothing of the program but what `tool` gives
// it, and the tool still less: default signals, its own session, "/" as working folder, no descriptors but
// its standard streams.
pid_t startProcess(const ToolProcess& tool);

// Blocks until the tool has begun; false if it never will, because its process was killed before.
bool readBeginning(const Descriptor& report);
// Blocks until the tool has ended; nothing if its process was killed before it could report that.
std::optional<ToolEnd> readEnd(const Descriptor& report);

// A copy of the descriptor that is not one of those that the child replaces; none for none.
Descriptor aboveOwnDescriptors(const Descriptor& descriptor);

}  // namespace norvik
