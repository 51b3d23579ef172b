// What a firewall of Linux lets everybody see.
#pragma once

#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/network.h"

namespace norvik {

// Whether TCP connections to the port are let in, as far as everybody may see it. Of ufw only its being on is
// seen, in its file below the root, since its rules are root's to read. Firewalld is asked; not in a sandbox,
// whose firewall it is not. Blocks for at most a second; may be called on any thread.
Firewall visibleFirewall(const RootFolder& root, uint16_t port);

}  // namespace norvik
