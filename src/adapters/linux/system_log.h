// The log over syslog, and assertions, which are lines of the log too.
#pragma once

#include <functional>
#include <string>

#include "src/server/mac/platform/assertions.h"
#include "src/server/mac/platform/system_log.h"

namespace norvik {

class LinuxSystemLog : public SystemLog {
 public:
  // Also gets every line, on the thread that logs it.
  using Observer = std::function<void(int priority, std::string_view line)>;

  // `ident` precedes every line; empty for the program's name. The process has one connection to the log, so
  // there may be only one of these at a time.
  LinuxSystemLog(std::string ident, Observer observer);
  ~LinuxSystemLog() override;
  LinuxSystemLog(const LinuxSystemLog&) = delete;
  LinuxSystemLog& operator=(const LinuxSystemLog&) = delete;

  void syslog(int priority, std::string_view line) override;

 private:
  std::string ident_;  // syslog keeps the pointer
  Observer observer_;
};

class LinuxAssertionHandler : public AssertionHandler {
 public:
  // `log` is borrowed.
  explicit LinuxAssertionHandler(SystemLog& log) : log_(log) {}

  void handleFailureInFunction(std::string_view function, std::string_view file, int line,
                               std::string_view description) override;

 private:
  SystemLog& log_;
};

}  // namespace norvik
