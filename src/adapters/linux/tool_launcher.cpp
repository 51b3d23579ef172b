// The order of the tools, and the threads that reap them.
#include "src/adapters/linux/tool_launcher.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <future>
#include <mutex>
#include <system_error>
#include <thread>

#include "src/adapters/linux/tool_process.h"

namespace norvik {

// How many tools run. Shared, because the threads may live longer than the launcher.
struct ToolLauncher::Running {
  std::mutex mutex;
  std::condition_variable changed;
  int count = 0;

  void add(int number) {
    const std::lock_guard lock(mutex);
    count += number;
    changed.notify_all();
  }
};

namespace {

constexpr const char* kSearchPath = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";

bool isProgram(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

// Waits for this one process. If the program waits for all children, or ignores their ends, it may already be
// gone, and then nothing is left to reap.
void reap(pid_t child) {
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

// A thread that receives none of the program's signals; false if none can be made.
template <typename Body>
bool startThread(Body body) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  bool started = true;
  try {
    std::thread(std::move(body)).detach();
  } catch (const std::system_error&) {
    started = false;
  }
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return started;
}

}  // namespace

ToolLauncher::ToolLauncher(RootFolder root, std::chrono::milliseconds longestWait)
    : root_(std::move(root)), longestWait_(longestWait), running_(std::make_shared<Running>()) {}

bool ToolLauncher::start(const std::string& path, const std::vector<std::string>& arguments,
                         const Descriptor& output) {
  ToolProcess tool{.program = root_.onDisk(path),
                   .words = {path},
                   .environment = {kSearchPath},
                   .output = aboveStandardStreams(output),
                   .earlier = aboveStandardStreams(previous_),
                   .longestWait = longestWait_};
  const bool hasAll = (!output || tool.output) && (!previous_ || tool.earlier);
  if (!hasAll || !isProgram(tool.program)) return false;
  tool.words.insert(tool.words.end(), arguments.begin(), arguments.end());
  if (!root_.folder().empty()) tool.environment.push_back("NORVIK_ROOT=" + root_.folder());

  // The thread comes first, because a child that nobody reaps could not be undone.
  const auto child = std::make_shared<std::promise<pid_t>>();
  const bool ready = startThread([running = running_, pid = child->get_future()]() mutable {
    if (const pid_t started = pid.get(); started > 0) reap(started);
    running->add(-1);
  });
  if (!ready) return false;
  running_->add(1);
  const pid_t pid = startProcess(tool);
  // Before the thread knows of the child and can reap it, so that the number is still its own.
  if (pid > 0) previous_ = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
  child->set_value(pid);
  return pid > 0;
}

bool ToolLauncher::waitForAll(std::chrono::milliseconds limit) {
  std::unique_lock lock(running_->mutex);
  return running_->changed.wait_for(lock, limit, [this] { return running_->count == 0; });
}

}  // namespace norvik
