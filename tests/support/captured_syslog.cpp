// Replaces the C library's function of the same name.
#include "tests/support/captured_syslog.h"

#include <syslog.h>

#include <array>
#include <cstdarg>
#include <cstdio>

namespace norvik {

std::vector<std::string>& capturedSyslog() {
  static std::vector<std::string> lines;
  return lines;
}

}  // namespace norvik

void syslog(int priority, const char* format, ...) {
  std::array<char, 1024> line{};
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line.data(), line.size(), format, arguments);
  va_end(arguments);
  norvik::capturedSyslog().push_back(std::to_string(priority) + " " + line.data());
}
