// What norvikctl returns to the shell. The numbers are those of sysexits.h.
#pragma once

namespace norvik::command {

enum ExitStatus : int {
  kExitOk = 0,
  kExitUsage = 64,         // a wrong command, an unknown name, a question that nobody can answer
  kExitData = 65,          // a value of another kind or out of its range
  kExitUnavailable = 69,   // the server did not start or stop
  kExitSoftware = 70,      // a fault of the program's own
  kExitCannotCreate = 73,  // a file was not written
  kExitIo = 74,            // the output could not be written
  kExitNoPermission = 77,  // not authorized, or a tool could not be run
};

}  // namespace norvik::command
