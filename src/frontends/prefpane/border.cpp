// The end of each exception. In C++: for the toolkit's run time, clang can catch none of its exceptions in a
// file that has both languages.
#include "src/frontends/prefpane/border.h"

#include <cstdio>
#include <exception>

#include "src/server/mac/platform/platform.h"

namespace norvik::prefpane {

namespace {

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

}  // namespace

void atBorder(const char* entry, const std::function<void()>& body) {
  try {
    body();
  } catch (const std::exception& exception) {
    logException(entry, exception);
  }
}

}  // namespace norvik::prefpane
