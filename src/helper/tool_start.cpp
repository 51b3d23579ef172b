// The process is made by fork and exec. This program has no threads.
#include "src/helper/tool_start.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace norvik::helper {

namespace {

constexpr const char* kSearchPath = "/usr/sbin:/usr/bin:/sbin:/bin";
constexpr int kExecFailed = 127;  // as shells do for a program that cannot be run

std::optional<rlimit> limitOfTools;  // none while this process has the same

void restoreSignals() {
  struct sigaction standard {};
  standard.sa_handler = SIG_DFL;
  for (int signal = 1; signal < NSIG; ++signal) ::sigaction(signal, &standard, nullptr);
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

// The writing end can also be read from: a daemon that the tool leaves behind with it as its standard error
// must not be killed for writing where nobody reads any more.
Pipe wordsPipe() {
  Pipe pipe = makePipe();
  if (!pipe.reading) return pipe;
  const std::string name = "/proc/self/fd/" + std::to_string(pipe.writing.number());
  if (Descriptor both(::open(name.c_str(), O_RDWR | O_CLOEXEC)); both) pipe.writing = std::move(both);
  ::fcntl(pipe.reading.number(), F_SETFL, O_NONBLOCK);
  return pipe;
}

// The descriptor is none of the first three: those are always open here.
void takeStreams(int words) {
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  ::dup2(nowhere, STDIN_FILENO);
  ::dup2(nowhere, STDOUT_FILENO);
  ::dup2(words, STDERR_FILENO);
}

}  // namespace

StartedTool startTool(const std::string& program, const Words& words) {
  Pipe pipe = wordsPipe();
  if (!pipe.reading || !pipe.writing) return {};
  const pid_t child = ::fork();
  if (child == 0) {
    takeStreams(pipe.writing.number());
    becomeTool(program, words);
    ::_exit(kExecFailed);
  }
  return {.process = child, .words = std::move(pipe.reading)};
}

void becomeTool(const std::string& program, const Words& words) {
  std::vector<char*> argv;
  for (const std::string& word : words)
    argv.push_back(const_cast<char*>(word.c_str()));  // as exec's old signature demands
  argv.push_back(nullptr);
  std::string path = std::string("PATH=") + kSearchPath;
  const std::array<char*, 2> environment{path.data(), nullptr};
  restoreSignals();
  ::setsid();
  ::umask(022);
  if (limitOfTools) ::setrlimit(RLIMIT_NOFILE, &*limitOfTools);
  ::close_range(STDERR_FILENO + 1, ~0U, 0);
  if (::chdir("/") == 0) ::execve(program.c_str(), argv.data(), environment.data());
  const std::string sentence = program + ": " + std::strerror(errno) + "\n";
  writeAll(Descriptor(::dup(STDERR_FILENO)), sentence);
}

bool openStandardStreams() {
  int opened = ::open("/dev/null", O_RDWR | O_NOCTTY);
  while (opened >= 0 && opened <= STDERR_FILENO) opened = ::dup(opened);
  if (opened > STDERR_FILENO) ::close(opened);
  return opened >= 0;
}

void allowManyDescriptors() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limitOfTools = limit;
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

void clearEnvironment() {
  ::clearenv();
  ::setenv("PATH", kSearchPath, 1);
}

}  // namespace norvik::helper
