// The sandbox's own notification bus: a private dbus-daemon with its socket in the root.
#pragma once

#include <sys/types.h>

#include <optional>

#include "sandbox/root.h"

namespace norvik::sandbox {

// The process of the bus; nothing when it is not running.
std::optional<pid_t> runningBus(const Root& root);

// Starts the bus, unless it is running, and writes its address to the sandbox's own file "bus". Throws
// std::runtime_error when it cannot.
void startBus(const Root& root);

}  // namespace norvik::sandbox
