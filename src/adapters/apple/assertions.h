// Assertions that failed, by the toolkit's handler of the thread.
#pragma once

#include "src/server/mac/platform/assertions.h"
#include "src/server/mac/platform/system_log.h"

namespace norvik {

class AppleAssertionHandler : public AssertionHandler {
 public:
  // `log` is borrowed.
  explicit AppleAssertionHandler(SystemLog& log) : log_(log) {}

  // The toolkit's handler logs and then raises, unless the host has put another in its place; what it raises
  // is caught here and logged.
  void handleFailureInFunction(std::string_view function, std::string_view file, int line,
                               std::string_view description) override;

 private:
  SystemLog& log_;
};

}  // namespace norvik
