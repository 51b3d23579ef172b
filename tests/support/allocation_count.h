// Counts how many times the program asks for memory with operator new, and refuses it. The source replaces
// operator new for the whole program that it is linked to.
#pragma once

namespace norvik {

// The successful requests since the program began, of all threads.
long allocationCount();

// Refuses the next request by `new (std::nothrow)`, and no other.
void refuseNextNothrowAllocation();

}  // namespace norvik
