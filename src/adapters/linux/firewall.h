// What a firewall of Linux lets everybody see.
#pragma once

#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/network.h"

namespace norvik {

// The rules of a firewall may be read by root only. Only its being on is seen, in its files below the root.
Firewall visibleFirewall(const RootFolder& root);

}  // namespace norvik
