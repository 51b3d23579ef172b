// Running a line of the tool command table as the super-user, by whatever means.
#pragma once

#include <string>
#include <vector>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/services/launched_tools.h"

namespace norvik {

class PrivilegedLines : public LaunchedTools {
 public:
  enum class Answer {
    launched,
    refused,  // for want of rights
    notPossible,
  };

  // Starts a line and returns before it has ended; blocks until it is decided whether it may run. `mayAsk`
  // allows that a person is asked meanwhile. `output`, if not null, receives what reads the line's standard
  // output.
  virtual Answer run(const std::string& tool, const std::vector<std::string>& arguments, bool mayAsk,
                     Descriptor* output) = 0;
};

}  // namespace norvik
