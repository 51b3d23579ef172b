// What a person clicks and types while the pane does not respond: it was meant for a pane that did, so it is
// dropped. A plain C++ header. Main thread only.
#pragma once

#include <functional>

namespace norvik::prefpane {

// Drops what waits to be handled.
void dropInput();

// Blocks for that many seconds. Windows are drawn meanwhile, what is clicked and typed is dropped, and no
// timer of the run loop's default mode fires.
void waitDroppingInput(double seconds);

// The same until the condition holds, which is looked at many times a second; false when the limit, in
// seconds, passed first.
bool waitDroppingInput(const std::function<bool()>& condition, double limit);

}  // namespace norvik::prefpane
