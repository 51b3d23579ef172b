// Platform interface to the system log. May be called on any thread; does not block on a reader.
#pragma once

#include <string_view>

namespace norvik {

inline constexpr int kLogError = 3;

class SystemLog {
 public:
  virtual ~SystemLog() = default;

  // Adds one line, taken as it is (no format directives), at a syslog priority.
  virtual void syslog(int priority, std::string_view line) = 0;
};

}  // namespace norvik
