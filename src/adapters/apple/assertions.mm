// Calls the handler, and catches what it raises.
#include "src/adapters/apple/assertions.h"

#import "src/adapters/apple/foundation.h"

namespace norvik {

using apple::text;

void AppleAssertionHandler::handleFailureInFunction(std::string_view function, std::string_view file,
                                                    int line, std::string_view description) {
  const apple::Pool pool;
  bool hasRaised = false;
  // Everything is caught: not every compiler's C++ distinguishes the toolkit's exceptions.
  @try {
    [[NSAssertionHandler currentHandler] handleFailureInFunction:text(function)
                                                            file:text(file)
                                                      lineNumber:line
                                                     description:@"%@", text(description)];
  } @catch (...) {
    hasRaised = true;
  }
  if (!hasRaised) return;
  log_.syslog(kLogError, "Norvik[E]: Assertion failure in " + std::string(function) + ", " +
                             std::string(file) + ":" + std::to_string(line) + ": " +
                             std::string(description));
}

}  // namespace norvik
