// The sandbox's clock: waits take as long as on the real computer, or a fraction of that.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

#include "sandbox/root.h"

namespace norvik::sandbox {

// Reads a speed, a decimal number above 0. Nothing for anything else.
std::optional<double> parseSpeed(std::string_view text);

// How many times faster than real time the sandbox runs; 1 when its clock file holds no speed.
double speed(const Root& root);

// Sleeps for a time of the sandbox's clock.
void waitFor(const Root& root, std::chrono::milliseconds time);

// Checks repeatedly until the condition holds; false when it did not within the limit. The limit is real
// time: it only guards against waiting for ever, and processes start no faster in a fast sandbox.
bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition);

}  // namespace norvik::sandbox
