// The line in the log about an exception. By itself, as it is linked with less than the whole pane too.
#include "src/frontends/prefpane/border.h"

#include <cstdio>

#include "src/server/mac/platform/platform.h"

namespace norvik::prefpane {

// Memory may be what is missing: the line has a place of its own and is cut rather than made longer.
void logException(const char* entry, const std::exception& exception) {
  char line[400];
  std::snprintf(line, sizeof line, "Norvik[E]: %s %s", entry, exception.what());
  Platform* computer = installedPlatform();
  if (computer == nullptr) return;
  try {
    computer->log.syslog(kLogError, line);
  } catch (const std::exception&) {
    // Nowhere is left to say it.
  }
}

}  // namespace norvik::prefpane
