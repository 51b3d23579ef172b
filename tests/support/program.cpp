// Programs by fork and exec, with all that allocates done before the fork.
#include "tests/support/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "tests/support/files.h"

namespace norvik {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

// A descriptor that is closed at the end of its life.
class Owned {
 public:
  explicit Owned(int number = -1) : number_(number) {}
  ~Owned() { close(); }
  Owned(Owned&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Owned& operator=(Owned&&) = delete;

  int number() const { return number_; }
  void close() {
    if (number_ != -1) ::close(std::exchange(number_, -1));
  }

 private:
  int number_;
};

struct Pipe {
  Owned reading, writing;
};

Pipe makePipe() {
  std::array<int, 2> ends{-1, -1};
  EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0) << std::strerror(errno);
  return {Owned(ends[0]), Owned(ends[1])};
}

Owned openFile(const fs::path& path, int flags) {
  Owned file(::open(path.c_str(), flags | O_CLOEXEC, 0600));
  EXPECT_NE(file.number(), -1) << path << ": " << std::strerror(errno);
  return file;
}

// Tests read what programs say, in English unless the test says otherwise.
constexpr const char* kLanguage = "LANGUAGE";

// What execvpe takes, made before the fork. Borrows the words.
struct Call {
  std::vector<std::string> variables;
  std::vector<char*> words, environment;

  Call(const Words& from, const ProgramOptions& options) {
    for (const std::string& word : from) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    for (char** variable = environ; *variable != nullptr; ++variable) {
      const std::string text = *variable;
      const std::string name = text.substr(0, text.find('='));
      if (name != kLanguage && !options.environment.contains(name)) variables.push_back(text);
    }
    if (!options.environment.contains(kLanguage)) variables.push_back(std::string(kLanguage) + "=en");
    for (const auto& [name, value] : options.environment) variables.push_back(name + "=" + value);
    for (std::string& variable : variables) environment.push_back(variable.data());
    environment.push_back(nullptr);
  }
};

struct Streams {
  int input, output, errors;
  bool terminal = false;
};

// In the child; reports why it could not become the program.
[[noreturn]] void become(const Call& call, const ProgramOptions& options, const Streams& streams,
                         int problems) {
  const bool ready = (!streams.terminal || (::setsid() != -1 && ::ioctl(streams.input, TIOCSCTTY, 0) == 0)) &&
                     ::dup2(streams.input, STDIN_FILENO) != -1 &&
                     ::dup2(streams.output, STDOUT_FILENO) != -1 &&
                     ::dup2(streams.errors, STDERR_FILENO) != -1 &&
                     (options.folder.empty() || ::chdir(options.folder.c_str()) == 0) &&
                     (!options.user || ::setuid(*options.user) == 0);
  if (ready) ::execvpe(call.words[0], call.words.data(), call.environment.data());
  const int problem = errno;
  (void)!::write(problems, &problem, sizeof problem);
  ::_exit(127);
}

// Returns once the child is its program; -1, with a failed test, where that was not possible.
pid_t start(const Words& words, const ProgramOptions& options, const Streams& streams) {
  const Call call(words, options);
  Pipe problems = makePipe();  // becoming the program closes it
  const pid_t child = ::fork();
  if (child == 0) become(call, options, streams, problems.writing.number());
  int problem = child < 0 ? errno : 0;
  problems.writing.close();
  while (::read(problems.reading.number(), &problem, sizeof problem) < 0 && errno == EINTR) {
  }
  if (problem == 0) return child;
  ADD_FAILURE() << words[0] << " cannot be started: " << std::strerror(problem);
  if (child > 0) ::waitpid(child, nullptr, 0);
  return -1;
}

std::chrono::milliseconds until(Clock::time_point end) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
}

struct Source {
  Owned& reading;
  std::string& text;
};

// A terminal that nobody has open any more returns an error instead of the end.
void readOnce(Source& source) {
  std::array<char, 4096> block{};
  const ssize_t got = ::read(source.reading.number(), block.data(), block.size());
  if (got > 0) return void(source.text.append(block.data(), static_cast<std::size_t>(got)));
  if (got == 0 || errno != EINTR) source.reading.close();
}

// Whether all sources came to their ends in time.
bool readAll(std::vector<Source>& sources, Clock::time_point end) {
  const auto isOpen = [](const Source& source) { return source.reading.number() != -1; };
  while (std::ranges::any_of(sources, isOpen)) {
    std::vector<pollfd> polled;  // poll ignores those that are closed
    for (const Source& source : sources) polled.push_back({source.reading.number(), POLLIN, 0});
    const auto left = until(end).count();
    if (left <= 0 || ::poll(polled.data(), polled.size(), static_cast<int>(left)) == 0) return false;
    for (std::size_t i = 0; i < sources.size(); ++i) {
      if (polled[i].revents != 0) readOnce(sources[i]);
    }
  }
  return true;
}

RunningProgram::Ending endingOf(int status) {
  if (WIFSIGNALED(status)) return {-1, WTERMSIG(status)};
  return {WEXITSTATUS(status), 0};
}

std::optional<RunningProgram::Ending> endingWithin(std::chrono::milliseconds limit, pid_t child) {
  int status = 0;
  if (!eventually([&] { return ::waitpid(child, &status, WNOHANG) == child; }, limit)) return std::nullopt;
  return endingOf(status);
}

// Reads the sources to their ends, and then waits for the child; its exit status.
int finish(pid_t child, const std::string& name, std::chrono::milliseconds limit,
           std::vector<Source> sources) {
  if (child == -1) return -1;
  const auto end = Clock::now() + limit;
  if (readAll(sources, end)) {
    if (const auto ending = endingWithin(until(end), child)) return ending->status;
  }
  ADD_FAILURE() << name << " did not end, or somebody still has its output open";
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  return -1;
}

}  // namespace

std::string builtProgram(const std::string& name) {
  return std::string(NORVIK_BIN_DIR) + "/" + name;
}

ProgramResult runProgram(const Words& words, const ProgramOptions& options, ErrorOutput errors) {
  const Owned input = openFile("/dev/null", O_RDONLY);
  Pipe output = makePipe(), apart = makePipe();
  const Owned& errorEnd = errors == ErrorOutput::apart ? apart.writing : output.writing;
  const pid_t child = start(words, options, {input.number(), output.writing.number(), errorEnd.number()});
  output.writing.close();
  apart.writing.close();
  ProgramResult result;
  result.status = finish(child, words[0], options.limit,
                         {{output.reading, result.output}, {apart.reading, result.errors}});
  return result;
}

ProgramResult runAtTerminal(const Words& words, const std::string& typed, const ProgramOptions& options) {
  std::array<int, 2> ends{-1, -1};
  EXPECT_EQ(::openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr), 0) << std::strerror(errno);
  Owned terminal(ends[0]), inside(ends[1]);
  for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
  const int number = inside.number();
  const pid_t child = start(words, options, {number, number, number, true});
  EXPECT_EQ(::write(terminal.number(), typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
  inside.close();
  ProgramResult result;
  result.status = finish(child, words[0], options.limit, {{terminal, result.output}});
  std::erase(result.output, '\r');
  return result;
}

RunningProgram::RunningProgram(const Words& words, const ProgramOptions& options, const fs::path& output) {
  constexpr int kAnew = O_WRONLY | O_CREAT | O_TRUNC;
  const Owned input = openFile("/dev/null", O_RDONLY);
  const Owned out = openFile(output.empty() ? "/dev/null" : output, kAnew);
  const Owned errors = openFile(output.empty() ? "/dev/null" : output.string() + ".err", kAnew);
  pid_ = start(words, options, {input.number(), out.number(), errors.number()});
}

RunningProgram::~RunningProgram() {
  if (pid_ == -1 || ending_) return;
  ::kill(pid_, SIGKILL);
  ::waitpid(pid_, nullptr, 0);
}

RunningProgram::RunningProgram(RunningProgram&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)), ending_(other.ending_) {}

void RunningProgram::send(int signal) {
  if (pid_ != -1 && !ending_) ::kill(pid_, signal);
}

std::optional<RunningProgram::Ending> RunningProgram::ending(std::chrono::milliseconds limit) {
  if (!ending_ && pid_ != -1) ending_ = endingWithin(limit, pid_);
  return ending_;
}

int RunningProgram::status(std::chrono::milliseconds limit) {
  const auto ended = ending(limit);
  EXPECT_TRUE(ended) << "process " << pid_ << " still runs";
  return ended ? ended->status : -1;
}

void PrintTo(const ProcessEntry& process, std::ostream* out) {
  *out << process.pid << " " << process.commandLine;
}

std::vector<ProcessEntry> processesBelow(const fs::path& folder, const std::string& name) {
  const std::string below = folder.string() + "/";
  std::vector<ProcessEntry> found;
  std::error_code ended;  // a process may be gone by now
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const std::string number = entry.path().filename();
    if (!std::ranges::all_of(number, [](char digit) { return digit >= '0' && digit <= '9'; })) continue;
    const pid_t pid = std::stoi(number);
    const std::string program = fs::read_symlink(entry.path() / "exe", ended);
    if (ended || pid == ::getpid() || !program.ends_with(name)) continue;
    std::string commandLine = contentOf(entry.path() / "cmdline");
    std::ranges::replace(commandLine, '\0', ' ');
    if (program.starts_with(below) || commandLine.find(below) != std::string::npos)
      found.push_back({pid, commandLine});
  }
  return found;
}

}  // namespace norvik
