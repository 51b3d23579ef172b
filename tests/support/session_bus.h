// A message bus of a test's own, as a person's session has one.
#pragma once

#include <map>
#include <string>

#include "tests/support/program.h"
#include "tests/support/temporary_folder.h"

namespace norvik {

// Whether somebody takes connections at the local socket: one that is there may not be listened on yet.
bool takesConnections(const std::string& path);

class SessionBus {
 public:
  // Starts it with these variables, which the programs that it starts get as well, and lets it start the
  // programs, by name on the bus and path. The test fails where it does not start.
  explicit SessionBus(const std::map<std::string, std::string>& variables = {},
                      const std::map<std::string, std::string>& programs = {});

  const std::string& address() const { return address_; }

 private:
  TemporaryFolder folder_;
  std::string address_;
  RunningProgram daemon_;
};

}  // namespace norvik
