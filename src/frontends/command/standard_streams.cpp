// The descriptors 0 to 2 and the streams over them.
#include "src/frontends/command/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <iostream>

namespace norvik::command {

void fillClosedStreams() {
  // The system gives out the lowest free number, so the places before are filled already.
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(number, F_GETFD) == -1) open("/dev/null", O_RDONLY);
  }
}

std::istream* personAtTerminal() {
  return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0 ? &std::cin : nullptr;
}

std::ostream* watchedOutput() {
  return isatty(STDOUT_FILENO) != 0 ? &std::cout : nullptr;
}

bool flushOutput() {
  return std::cout.flush().good();
}

}  // namespace norvik::command
