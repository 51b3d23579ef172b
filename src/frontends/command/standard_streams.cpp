// The descriptors 0 to 2 and the streams over them.
#include "src/frontends/command/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>
#include <string>

namespace norvik::command {

namespace {

constexpr std::size_t kLongestTyped = 4096;  // a longer line is no answer

}  // namespace

void fillClosedStreams() {
  // The system gives out the lowest free number, so the places before are filled already.
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(number, F_GETFD) == -1) open("/dev/null", O_RDONLY);
  }
}

std::istream* personAtTerminal() {
  return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0 ? &std::cin : nullptr;
}

TypedLine typedLine(std::chrono::milliseconds limit) {
  static std::string pending;  // what was read and is no whole line yet
  static bool isGone = false;
  for (;;) {
    if (const std::size_t end = pending.find('\n'); end != std::string::npos) {
      TypedLine line{TypedLine::Kind::line, pending.substr(0, end)};
      pending.erase(0, end + 1);
      return line;
    }
    if (isGone) return {TypedLine::Kind::gone};
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (poll(&input, 1, static_cast<int>(limit.count())) <= 0) return {};
    char bytes[256];
    const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count > 0) pending.append(bytes, static_cast<std::size_t>(count));
    if (pending.size() > kLongestTyped) pending.clear();
    isGone = count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
    if (count < 0 && !isGone) return {};
  }
}

std::ostream* watchedOutput() {
  return isatty(STDOUT_FILENO) != 0 ? &std::cout : nullptr;
}

bool flushOutput() {
  return std::cout.flush().good();
}

}  // namespace norvik::command
