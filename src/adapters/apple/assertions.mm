// Calls the handler, and catches what it raises.
#include "src/adapters/apple/assertions.h"

#import "src/adapters/apple/foundation.h"

namespace norvik {

using apple::text;
using apple::utf8;

void AppleAssertionHandler::handleFailureInFunction(std::string_view function, std::string_view file,
                                                    int line, std::string_view description) {
  const apple::Pool pool;
  std::string raised;
  @try {
    [[NSAssertionHandler currentHandler] handleFailureInFunction:text(function)
                                                            file:text(file)
                                                      lineNumber:line
                                                     description:@"%@", text(description)];
  } @catch (NSException* exception) {
    raised = utf8([exception reason]);
  }
  if (!raised.empty()) log_.syslog(kLogError, "Norvik[E]: Assertion failure: " + raised);
}

}  // namespace norvik
