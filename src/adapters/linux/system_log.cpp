// Lines to syslog(3).
#include "src/adapters/linux/system_log.h"

#include <syslog.h>

namespace norvik {

LinuxSystemLog::LinuxSystemLog(std::string ident, Observer observer)
    : ident_(std::move(ident)), observer_(std::move(observer)) {
  ::openlog(ident_.empty() ? nullptr : ident_.c_str(), LOG_PID, LOG_USER);
}

LinuxSystemLog::~LinuxSystemLog() {
  ::closelog();
}

void LinuxSystemLog::syslog(int priority, std::string_view line) {
  ::syslog(priority, "%s", std::string(line).c_str());
  if (observer_) observer_(priority, line);
}

void LinuxAssertionHandler::handleFailureInFunction(std::string_view function, std::string_view file,
                                                    int line, std::string_view description) {
  log_.syslog(kLogError, "Norvik[E]: Assertion failure in " + std::string(function) + ", " +
                             std::string(file) + ":" + std::to_string(line) + ": " +
                             std::string(description));
}

}  // namespace norvik
