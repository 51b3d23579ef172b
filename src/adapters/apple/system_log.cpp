// Lines to syslog(3).
#include "src/adapters/apple/system_log.h"

#include <syslog.h>

#include <string>

namespace norvik {

void AppleSystemLog::syslog(int priority, std::string_view line) {
  ::syslog(priority, "%s", std::string(line).c_str());
  if (observer_) observer_(priority, line);
}

}  // namespace norvik
