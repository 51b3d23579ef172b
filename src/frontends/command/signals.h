// Signals that end a program: noted while a change is made that must not be cut in two, and the end of what
// goes on until somebody interrupts it.
#pragma once

#include "src/adapters/linux/run_loop.h"

namespace norvik::command {

// From now on a person who interrupts the program (SIGINT), ends it (SIGTERM) or closes its terminal (SIGHUP)
// is only noted, a read that waits for a person ends, and output that nobody reads any more (SIGPIPE) fails
// to be written. Tools that the program launches have the usual behaviour.
void deferSignals();

// From now on a person who interrupts or ends the program stops the run loop, which has to live as long as
// the program.
void stopOnSignals(LinuxRunLoop& loop);

// Whether one of the first three has arrived since; after stopOnSignals, one of the first two.
bool wasInterrupted();
// Whether one of the first two has.
bool wasStopped();

}  // namespace norvik::command
