// Between fork and exec, only calls that are safe in the child of a program with threads: everything that
// needs memory is prepared before.
#include "src/adapters/linux/tool_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace norvik {

namespace {

constexpr int kExecFailed = 127;  // as shells do for a program that cannot be run
constexpr int kEarlier = STDERR_FILENO + 1;
// Our own copies start here, so that moving one into place never overwrites another.
constexpr int kFirstFree = kEarlier + 1;

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

// Sets the standard streams and closes all other descriptors: neither a tool that waits for its turn nor a
// daemon that it starts may keep the program's files and pipes open.
void takeDescriptors(const ToolProcess& tool) {
  const int nowhere = ::open("/dev/null", O_RDWR);
  ::dup2(nowhere, STDIN_FILENO);
  ::dup2(nowhere, STDERR_FILENO);
  ::dup2(tool.output ? tool.output.number() : nowhere, STDOUT_FILENO);
  if (tool.earlier) ::dup3(tool.earlier.number(), kEarlier, O_CLOEXEC);
  ::close_range(tool.earlier ? kFirstFree : kEarlier, ~0U, 0);
}

[[noreturn]] void becomeTool(const ToolProcess& tool, char* const* argv, char* const* envp) {
  restoreSignals();
  ::setsid();  // keys pressed at the program's terminal, and the end of its session, must not reach the tool
  takeDescriptors(tool);
  pollfd earlier{kEarlier, POLLIN, 0};
  if (tool.earlier) ::poll(&earlier, 1, static_cast<int>(tool.longestWait.count()));
  ::umask(022);
  if (::chdir("/") == 0) ::execve(tool.program.c_str(), argv, envp);
  ::_exit(kExecFailed);
}

}  // namespace

pid_t startProcess(const ToolProcess& tool) {
  const std::vector<char*> argv = pointers(tool.words);
  const std::vector<char*> envp = pointers(tool.environment);
  // With all signals blocked, none of the program's handlers runs in the child.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  const pid_t child = ::fork();
  if (child == 0) becomeTool(tool, argv.data(), envp.data());
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return child;
}

Descriptor aboveStandardStreams(const Descriptor& descriptor) {
  return Descriptor(descriptor ? ::fcntl(descriptor.number(), F_DUPFD_CLOEXEC, kFirstFree) : -1);
}

}  // namespace norvik
