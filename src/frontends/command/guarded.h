// What no command can deal with itself: too little memory, and a fault of the program's own.
#pragma once

#include <functional>

#include "src/frontends/command/ending.h"

namespace norvik::command {

// Runs a command to its end. What it throws becomes a sentence and kExitSoftware.
ExitStatus guarded(const Output& output, const std::function<ExitStatus()>& run);

}  // namespace norvik::command
