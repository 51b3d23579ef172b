// Signals that end a program, while a change is made that must not be cut in two.
#pragma once

namespace norvik::command {

// From now on a person who interrupts the program (SIGINT), ends it (SIGTERM) or closes its terminal (SIGHUP)
// is only noted, a read that waits for a person ends, and output that nobody reads any more (SIGPIPE) fails
// to be written. Tools that the program launches have the usual behaviour.
void deferSignals();

// Whether one of the first three has arrived since.
bool wasInterrupted();
// Whether one of the first two has.
bool wasStopped();

}  // namespace norvik::command
