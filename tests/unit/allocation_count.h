// How many times the program asked for memory with operator new. Its source replaces operator new for the
// whole program that it is linked to.
#pragma once

namespace norvik {

// Since the program began, on any thread.
long allocationCount();

}  // namespace norvik
