// The three streams that a shell gives a program, which may be closed, full, or no terminal.
#pragma once

#include <chrono>
#include <istream>
#include <ostream>

#include "src/frontends/command/context.h"

namespace norvik::command {

// Fills the place of each closed standard stream with one that cannot be written, so that no file that is
// opened later takes the place and receives the output.
void fillClosedStreams();

// A person who can read questions and type answers; null where there is none.
std::istream* personAtTerminal();

// The next line of standard input, without its end; waits at most until the limit. An end of the input, or of
// the terminal, is for good.
TypedLine typedLine(std::chrono::milliseconds limit);

// Standard output where a person watches it; null where it goes to a file or to another program.
std::ostream* watchedOutput();

// Writes out what standard output still holds; false where any of the output could not be written.
bool flushOutput();

}  // namespace norvik::command
