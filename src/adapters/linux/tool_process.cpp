// Between fork and exec, only calls that are safe in the child of a program with threads: everything that
// needs memory is prepared before.
//
// The child that looks after a tool is there because the program cannot be relied on: it may end first, and
// it may handle the ends of its children as it likes, so that a tool's status is lost to it.
#include "src/adapters/linux/tool_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "src/adapters/services/launched_tools.h"

namespace norvik {

namespace {

constexpr int kExecFailed = 127;  // as shells do for a program that cannot be run

// Where the child has its own descriptors.
constexpr int kEarlier = STDERR_FILENO + 1;
constexpr int kHeld = kEarlier + 1;
constexpr int kReport = kHeld + 1;
constexpr int kWords = kReport + 1;  // the reading end of the tool's standard error
// Our own copies start here, so that moving one into place never overwrites another.
constexpr int kFirstFree = kWords + 1;

constexpr char kBegun = 'b';

// What is reported of an end, before as many bytes of words.
struct EndHeader {
  int status;
  std::size_t length;
};

// A pipe for what the tool says. The writing end can also be read from: a daemon that the tool leaves behind
// with this end as its standard error must not be killed for writing where nobody else reads.
struct WordsPipe {
  Descriptor reading;
  Descriptor writing;
};

WordsPipe makeWordsPipe() {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return {};
  WordsPipe pipe{.reading = Descriptor(ends[0]), .writing = Descriptor(ends[1])};
  const std::string name = "/proc/self/fd/" + std::to_string(pipe.writing.number());
  if (Descriptor both(::open(name.c_str(), O_RDWR | O_CLOEXEC)); both) pipe.writing = std::move(both);
  ::fcntl(pipe.reading.number(), F_SETFL, O_NONBLOCK);
  return {.reading = aboveOwnDescriptors(pipe.reading), .writing = aboveOwnDescriptors(pipe.writing)};
}

// The vectors for exec, which point into the strings of the tool.
std::vector<char*> pointers(const std::vector<std::string>& words) {
  std::vector<char*> result;
  result.reserve(words.size() + 1);
  for (const std::string& word : words)
    result.push_back(const_cast<char*>(word.c_str()));  // as exec's old signature demands
  result.push_back(nullptr);
  return result;
}

// Resets signal dispositions: the tool must not inherit ours.
void restoreSignals() {
  struct sigaction standard {};
  standard.sa_handler = SIG_DFL;
  for (int signal = 1; signal < NSIG; ++signal) ::sigaction(signal, &standard, nullptr);
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void put(const Descriptor& descriptor, int place) {
  if (descriptor) {
    ::dup3(descriptor.number(), place, O_CLOEXEC);
  } else {
    ::close(place);
  }
}

// Sets the standard streams and our own descriptors and closes all others: nobody who waits for a tool's turn
// or end may keep the program's files and pipes open.
void takeDescriptors(const ToolProcess& tool, const WordsPipe& words) {
  const int nowhere = ::open("/dev/null", O_RDWR);
  ::dup2(nowhere, STDIN_FILENO);
  ::dup2(tool.output ? tool.output.number() : nowhere, STDOUT_FILENO);
  ::dup2(words.writing.number(), STDERR_FILENO);
  put(tool.earlier, kEarlier);
  put(tool.held, kHeld);
  put(tool.report, kReport);
  put(words.reading, kWords);
  ::close_range(kFirstFree, ~0U, 0);
}

void writeWhole(int descriptor, const void* bytes, std::size_t size) {
  const char* rest = static_cast<const char*>(bytes);
  for (ssize_t count = 0; size > 0; size -= static_cast<std::size_t>(count), rest += count) {
    count = ::write(descriptor, rest, size);
    if (count <= 0) return;
  }
}

void say(const char* text) {
  writeWhole(STDERR_FILENO, text, std::strlen(text));
}

void sayWhyNot(const char* program) {
  const char* reason = ::strerrordesc_np(errno);
  say(program);
  say(": ");
  say(reason != nullptr ? reason : "it cannot be run");
}

[[noreturn]] void becomeTool(const char* program, char* const* argv, char* const* envp) {
  ::umask(022);
  if (::chdir("/") == 0) ::execve(program, argv, envp);
  sayWhyNot(argv[0]);
  ::_exit(kExecFailed);
}

// Keeps the beginning of what the tool says, in memory of the child's own, and discards the rest.
class Listener {
 public:
  // Reads once; false where there is nothing to read.
  bool hear() {
    std::array<char, 4096> block;
    const ssize_t count = ::read(kWords, block.data(), block.size());
    if (count <= 0) return false;
    const std::size_t kept = std::min(static_cast<std::size_t>(count), words_.size() - length_);
    std::memcpy(words_.data() + length_, block.data(), kept);
    length_ += kept;
    return true;
  }
  // Hears what the tool said before its end. Daemons that it left behind may go on; their words are lost from
  // now on, and they are never made to wait.
  void hearTheLast() {
    constexpr int kBlocksInPipe = 32;  // twice as many as the system keeps, for those who write meanwhile
    ::fcntl(STDERR_FILENO, F_SETFL, ::fcntl(STDERR_FILENO, F_GETFL) | O_NONBLOCK);
    for (int i = 0; i < kBlocksInPipe && hear(); ++i) continue;
  }
  void report(int status) const {
    const EndHeader header{status, length_};
    writeWhole(kReport, &header, sizeof header);
    writeWhole(kReport, words_.data(), length_);
  }

 private:
  std::array<char, kLongestToolWords> words_{};
  std::size_t length_ = 0;
};

// Listens until the tool has ended; its status.
int listenUntilEnd(pid_t tool, Listener& listener) {
  constexpr int kPollPause = 50;  // for systems on which the end cannot be waited for together with the words
  const int end = static_cast<int>(::syscall(SYS_pidfd_open, tool, 0));
  std::array<pollfd, 2> sources{{{kWords, POLLIN, 0}, {end, POLLIN, 0}}};
  for (;;) {
    ::poll(sources.data(), sources.size(), end >= 0 ? -1 : kPollPause);
    int status = 0;
    if (::waitpid(tool, &status, WNOHANG) == tool) return status;
    listener.hear();
  }
}

[[noreturn]] void lookAfter(const ToolProcess& tool, const WordsPipe& words, char* const* argv,
                            char* const* envp) {
  restoreSignals();
  ::setsid();  // keys pressed at the program's terminal, and the end of its session, must not reach the tool
  ::prctl(PR_SET_NAME, "norvik-tool");  // who ends the program by its name means the program alone
  const char* const program = tool.program.c_str();
  const int longestWait = tool.longestWait ? static_cast<int>(tool.longestWait->count()) : -1;
  const bool waits = static_cast<bool>(tool.earlier);
  takeDescriptors(tool, words);
  pollfd earlier{kEarlier, POLLIN, 0};
  if (waits) ::poll(&earlier, 1, longestWait);
  const pid_t child = ::_Fork();
  if (child == 0) becomeTool(program, argv, envp);
  if (child < 0) sayWhyNot(argv[0]);
  ::signal(SIGPIPE, SIG_IGN);           // the program may have ended, and then no report can be written
  ::dup2(STDIN_FILENO, STDOUT_FILENO);  // closes the output here, so that it ends when the tool ends
  writeWhole(kReport, &kBegun, sizeof kBegun);
  Listener listener;
  const int status = child < 0 ? W_EXITCODE(kExecFailed, 0) : listenUntilEnd(child, listener);
  listener.hearTheLast();
  listener.report(status);
  ::_exit(0);
}

// Whether so many bytes came before the end of the pipe.
bool readWhole(const Descriptor& pipe, void* bytes, std::size_t size) {
  char* place = static_cast<char*>(bytes);
  while (size > 0) {
    const ssize_t count = ::read(pipe.number(), place, size);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    place += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

pid_t startProcess(const ToolProcess& tool) {
  const std::vector<char*> argv = pointers(tool.words);
  const std::vector<char*> envp = pointers(tool.environment);
  const WordsPipe words = makeWordsPipe();
  if (!words.reading || !words.writing) return -1;
  // With all signals blocked, none of the program's handlers runs in the child.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  const pid_t child = ::fork();
  if (child == 0) lookAfter(tool, words, argv.data(), envp.data());
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return child;
}

bool readBeginning(const Descriptor& report) {
  char byte = 0;
  return readWhole(report, &byte, sizeof byte);
}

std::optional<ToolEnd> readEnd(const Descriptor& report) {
  EndHeader header{};
  if (!readWhole(report, &header, sizeof header) || header.length > kLongestToolWords) return std::nullopt;
  ToolEnd end{header.status, std::string(header.length, '\0')};
  if (!readWhole(report, end.words.data(), end.words.size())) return std::nullopt;
  return end;
}

Descriptor aboveOwnDescriptors(const Descriptor& descriptor) {
  return Descriptor(descriptor ? ::fcntl(descriptor.number(), F_DUPFD_CLOEXEC, kFirstFree) : -1);
}

}  // namespace norvik
