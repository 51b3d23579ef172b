// Platform interface to the toolkit's handler of broken assertions. Called on the main thread only.
#pragma once

#include <string_view>

namespace norvik {

class AssertionHandler {
 public:
  virtual ~AssertionHandler() = default;

  // Reports an assertion that failed, and returns: the caller carries on.
  virtual void handleFailureInFunction(std::string_view function, std::string_view file, int line,
                                       std::string_view description) = 0;
};

}  // namespace norvik
