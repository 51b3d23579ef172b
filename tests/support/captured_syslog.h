// The lines that the program sends to the system log. The source replaces syslog(3) for the whole program
// that it is linked to, so that none arrives there.
#pragma once

#include <string>
#include <vector>

namespace norvik {

// Every line so far, formatted, as "PRIORITY LINE". Tests clear it. Not for several threads.
std::vector<std::string>& capturedSyslog();

}  // namespace norvik
