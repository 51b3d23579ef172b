// What norvikctl tells the shell when it ends. The numbers are those that mail and other system programs use.
#pragma once

namespace norvik::command {

enum ExitStatus : int {
  kExitOk = 0,
  kExitUsage = 64,         // a wrong command, an unknown name, a question that nobody can answer
  kExitData = 65,          // a value of another kind or out of its range
  kExitUnavailable = 69,   // the server did not come up or go down
  kExitSoftware = 70,      // a fault of the program's own
  kExitCannotCreate = 73,  // a file was not written
  kExitNoPermission = 77,  // not authorized
};

}  // namespace norvik::command
