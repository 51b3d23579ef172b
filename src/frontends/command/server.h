// The server as the commands order it about.
#pragma once

#include "src/frontends/command/session.h"
#include "src/frontends/shared/server/server_order.h"

namespace norvik::command {

// Borrows both. An order to it throws an Interruption where the program is stopped meanwhile.
OrderedServer orderedServer(const Context& context, Session& session);

}  // namespace norvik::command
