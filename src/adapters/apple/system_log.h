// The log over syslog, which reaches the system's log. The connection is the host program's, and is left as
// it is.
#pragma once

#include <functional>

#include "src/server/mac/platform/system_log.h"

namespace norvik {

class AppleSystemLog : public SystemLog {
 public:
  // Also gets every line, on the thread that logs it; may be none.
  using Observer = std::function<void(int priority, std::string_view line)>;

  explicit AppleSystemLog(Observer observer) : observer_(std::move(observer)) {}

  void syslog(int priority, std::string_view line) override;

 private:
  Observer observer_;
};

}  // namespace norvik
