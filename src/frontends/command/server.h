// An order to the server that a command gives beside its own work.
#pragma once

#include "src/frontends/command/context.h"
#include "src/frontends/shared/change/failure.h"

namespace norvik::command {

// Starts the server unless it runs, and writes nothing. Blocks until it is done.
ChangeError startAgain(const Context& context);

}  // namespace norvik::command
