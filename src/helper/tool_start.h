// Starting a tool as the super-user: a fixed program, nothing of ours but what it is given here.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "src/adapters/posix/descriptors.h"
#include "src/helper/allowed_lines.h"

namespace norvik::helper {

struct StartedTool {
  pid_t process = -1;  // -1 where none could be made
  Descriptor words;    // reads what the tool writes to its standard error, without waiting
};

// Starts the tool at `program` and returns at once. It has an empty environment but for PATH, "/" as its
// folder, default signals, a session of its own, an empty standard input, `output` as standard output
// (without one what it writes is discarded), and no further descriptors. 127 is its exit status if it cannot
// be run.
StartedTool startTool(const std::string& program, const Words& words);

// The same surroundings for this process, which becomes the tool; returns only if that is not possible.
void becomeTool(const std::string& program, const Words& words);

// Puts nothing at each of the descriptors 0 to 2 that is closed, so that no file that is opened later is
// taken for a standard stream. False if that is not possible.
bool openStandardStreams();

// Removes every variable but a fixed PATH.
void clearEnvironment();

}  // namespace norvik::helper
