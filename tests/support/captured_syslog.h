// What the tests' process sends to the system log, which never gets it: syslog(3) itself is replaced.
#pragma once

#include <string>
#include <vector>

namespace norvik {

// Every line so far, formatted, as "PRIORITY LINE".
std::vector<std::string>& capturedSyslog();

}  // namespace norvik
