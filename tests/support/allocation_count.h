// How many times the program asked for memory with operator new, and having it refused. Its source replaces
// operator new for the whole program that it is linked to.
#pragma once

namespace norvik {

// Since the program began, on any thread.
long allocationCount();

// From now on the next request by `new (std::nothrow)` is refused, and no other.
void refuseNextNothrowAllocation();

}  // namespace norvik
