// Waits of the pane: windows are drawn meanwhile, and no timer of the run loop's default mode fires. What is
// clicked and typed while the pane shows that it does not respond was meant for a pane that did, so it is
// dropped; in a short wait it is kept. A plain C++ header. Main thread only.
#pragma once

#include <functional>

namespace norvik::prefpane {

// Whether the pane is in one of these waits.
bool isWaiting();

// Drops what waits to be handled.
void dropInput();

// Blocks for that many seconds; what is clicked and typed is dropped.
void waitDroppingInput(double seconds);

// Blocks until the condition holds, which is looked at many times a second; false when the limit, in seconds,
// passed first. What is clicked and typed is handled afterwards.
bool waitKeepingInput(const std::function<bool()>& condition, double limit);

}  // namespace norvik::prefpane
