// Programs that a test runs: to their end, in the background, or at a terminal.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/waiting.h"

namespace norvik {

using Words = std::vector<std::string>;

// How long a program may take that runs to its end.
inline constexpr std::chrono::milliseconds kProgramLimit = 6 * kPatience;

// How a program is started. Its standard input is empty.
struct ProgramOptions {
  std::map<std::string, std::string> environment = {};  // added to that of the tests, in English
  std::filesystem::path folder = {};                    // its current folder; that of the tests where empty
  std::optional<uid_t> user = {};                   // only the super-user can start programs of another user
  std::chrono::milliseconds limit = kProgramLimit;  // not for a program in the background
};

// The path of a program of this build: "norvikctl".
std::string builtProgram(const std::string& name);

struct ProgramResult {
  int status = -1;     // the exit status; -1 where a signal ended the program
  std::string output;  // on its standard output
  std::string errors;  // on its standard error
};

// Where a program's standard error goes.
enum class ErrorOutput { apart, withOutput };

// Runs a program to its end and until nobody has its output open any more: the first word is its path, or a
// name that is looked up in PATH, the others are its arguments. The test fails where the program cannot be
// started, and where the limit is exceeded, after which the program is ended.
ProgramResult runProgram(const Words& words, const ProgramOptions& options = {},
                         ErrorOutput errors = ErrorOutput::apart);

// The same at a terminal of its own, where `typed` is typed at once. All that appears on the terminal is the
// output, with line feeds alone at the ends of lines.
ProgramResult runAtTerminal(const Words& words, const std::string& typed, const ProgramOptions& options = {});

// A program in the background.
class RunningProgram {
 public:
  // Starts it and returns when it runs. Its standard output goes to the file `output`, which is made or
  // emptied, its standard error to `output`.err, and both to nowhere where that is empty. The test fails
  // where the program cannot be started.
  explicit RunningProgram(const Words& words, const ProgramOptions& options = {},
                          const std::filesystem::path& output = {});
  // Ends it, where it still runs, by SIGKILL.
  ~RunningProgram();
  RunningProgram(RunningProgram&& other) noexcept;
  RunningProgram& operator=(RunningProgram&&) = delete;

  // -1 where it could not be started.
  pid_t pid() const { return pid_; }
  // Does nothing once the end was noticed: the process id may be another program's then.
  void send(int signal);

  struct Ending {
    int status = -1;  // the exit status; -1 where a signal ended the program
    int signal = 0;   // the signal that ended the program; 0 where it exited
  };
  // How it ended; blocks until then, and returns nothing where it still runs after the limit.
  std::optional<Ending> ending(std::chrono::milliseconds limit = kPatience);
  // The exit status, as in Ending; the test fails where it still runs after the limit.
  int status(std::chrono::milliseconds limit = kPatience);

 private:
  pid_t pid_ = -1;
  std::optional<Ending> ending_;
};

struct ProcessEntry {
  pid_t pid = -1;
  std::string commandLine;
};
void PrintTo(const ProcessEntry& process, std::ostream* out);

// The running processes, other than this one, whose program is below the folder or whose command line names
// it; only those whose program's path ends with `name`.
std::vector<ProcessEntry> processesBelow(const std::filesystem::path& folder, const std::string& name = "");

}  // namespace norvik
