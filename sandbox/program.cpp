// What the stand-ins have in common.
#include "sandbox/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <iostream>

namespace norvik::sandbox {

int runProgram(int argc, char** argv, const std::function<int(const Root&, const Arguments&)>& body) {
  const std::string name = std::filesystem::path(argc > 0 ? argv[0] : "").filename();
  const auto root = Root::find();
  if (!root) {
    std::cerr << name << ": no sandbox; set NORVIK_ROOT to one, or run the copy inside one\n";
    return kExitNoRoot;
  }
  try {
    return body(*root, Arguments(argv + 1, argv + argc));
  } catch (const std::exception& failure) {
    std::cerr << name << ": " << failure.what() << "\n";
    return 1;
  }
}

int usage(std::string_view text) {
  std::cerr << "usage: " << text << "\n";
  return kExitUsage;
}

void logLine(const Root& root, std::string_view log, std::string_view line) {
  std::array<char, 32> time{};
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  std::strftime(time.data(), time.size(), "%Y-%m-%dT%H:%M:%SZ ", gmtime_r(&now, &parts));
  const std::string text = time.data() + std::string(line) + "\n";
  const std::filesystem::path file = root.own("log") / (std::string(log) + ".log");
  const int descriptor = open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (descriptor < 0) return;
  // One write for a line keeps the lines of several processes apart. A log that is full must not stop a
  // program.
  [[maybe_unused]] ssize_t written = write(descriptor, text.data(), text.size());
  close(descriptor);
}

int runAndWait(const Root& root, const std::filesystem::path& program, const Arguments& arguments) {
  setenv("NORVIK_ROOT", root.folder().c_str(), 1);
  Arguments words{program.string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawnp(&child, program.c_str(), nullptr, nullptr, pointers.data(), environ) != 0) return 127;
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace norvik::sandbox
