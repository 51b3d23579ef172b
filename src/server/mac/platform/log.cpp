// Fills in the line and passes it to the system log.
#include "src/server/mac/platform/log.h"

#include <cstddef>
#include <string>

#include "src/server/mac/platform/platform.h"

namespace norvik {

void logFailure(const char* format, std::string_view text) {
  std::string line = format;
  if (const std::size_t place = line.find("%s"); place != std::string::npos) line.replace(place, 2, text);
  platform().log.syslog(kLogError, line);
}

}  // namespace norvik
