// The agent is a child, which ends with this program however that ends.
#include "src/adapters/linux/text_agent.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr const char* kAgent = "/usr/bin/pkttyagent";
constexpr int kNotifyDescriptor = 3;
constexpr std::chrono::milliseconds kLongestStart = std::chrono::seconds(5);

// Keys that interrupt go to the whole foreground group, so the agent gets them too: polkit takes that as a
// refusal, and this program decides for itself.
[[noreturn]] void becomeAgent(pid_t parent, const Descriptor& ready) {
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (::getppid() != parent) ::_exit(0);
  struct sigaction standard {};
  standard.sa_handler = SIG_DFL;
  for (int signal = 1; signal < NSIG; ++signal) ::sigaction(signal, &standard, nullptr);
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  if (ready.number() == kNotifyDescriptor) {
    ::fcntl(kNotifyDescriptor, F_SETFD, 0);
  } else {
    ::dup2(ready.number(), kNotifyDescriptor);
  }
  ::close_range(kNotifyDescriptor + 1, ~0U, 0);
  ::execl(kAgent, kAgent, "--notify-fd", "3", nullptr);
  ::_exit(127);
}

bool hasTerminal() {
  return static_cast<bool>(Descriptor(::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)));
}

}  // namespace

std::unique_ptr<TextAgent> TextAgent::start() {
  if (!hasTerminal() || ::access(kAgent, X_OK) != 0) return nullptr;
  Pipe ready = makePipe();
  if (!ready.reading) return nullptr;
  const pid_t self = ::getpid();
  const pid_t child = ::fork();
  if (child < 0) return nullptr;
  if (child == 0) becomeAgent(self, ready.writing);
  ready.writing.reset();
  // The agent closes its end when it is ready, and when it could not be run.
  pollfd end{ready.reading.number(), POLLIN, 0};
  while (::poll(&end, 1, static_cast<int>(kLongestStart.count())) < 0 && errno == EINTR) continue;
  return std::unique_ptr<TextAgent>(new TextAgent(child));
}

TextAgent::~TextAgent() {
  ::kill(process_, SIGTERM);
  ::kill(process_, SIGCONT);
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) continue;
}

}  // namespace norvik
