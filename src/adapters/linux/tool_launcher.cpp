// The order of the tools, and the threads that learn of their ends.
#include "src/adapters/linux/tool_launcher.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <future>
#include <mutex>

#include "src/adapters/posix/threads.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

// How many tools run. Shared, because the threads may live longer than the launcher.
struct ToolLauncher::Running {
  std::mutex mutex;  // for the launches too
  std::condition_variable changed;
  int count = 0;

  void add(int number) {
    const std::lock_guard lock(mutex);
    count += number;
    changed.notify_all();
  }
};

// A tool that was started, and what is known of it.
struct ToolLauncher::Launch {
  ToolOutcome outcome;
};

namespace {

constexpr const char* kSearchPath = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";

bool isProgram(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

// Waits for this one process; the signal that ended it, 0 for none. If the program waits for all children, or
// ignores their ends, it may already be gone, and then nothing is left to reap.
int reap(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return 0;
  }
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

void note(ToolOutcome& outcome, const ToolEnd& end) {
  const bool killed = WIFSIGNALED(end.status);
  outcome.end = killed ? ToolOutcome::End::killed : ToolOutcome::End::exited;
  outcome.status = killed ? WTERMSIG(end.status) : WEXITSTATUS(end.status);
  outcome.words = trimmed(end.words, kCSpace);
}

// For a tool whose end nobody can report, because the process that looked after it was killed.
void noteLost(ToolOutcome& outcome, int signal) {
  outcome.end = ToolOutcome::End::killed;
  outcome.status = signal != 0 ? signal : SIGKILL;
}

// Follows the tool until it has ended, and reaps the process that looks after it. Closes the report.
void follow(pid_t child, Descriptor report, std::mutex& mutex, ToolOutcome& outcome) {
  if (readBeginning(report)) {
    const std::lock_guard lock(mutex);
    outcome.end = ToolOutcome::End::running;
  }
  const std::optional<ToolEnd> end = readEnd(report);
  const int signal = reap(child);
  const std::lock_guard lock(mutex);
  if (end) {
    note(outcome, *end);
  } else {
    noteLost(outcome, signal);
  }
}

}  // namespace

ToolLauncher::ToolLauncher(RootFolder root, std::chrono::milliseconds longestDelay)
    : root_(std::move(root)), longestDelay_(longestDelay), running_(std::make_shared<Running>()) {}

ToolLauncher::~ToolLauncher() = default;

// How much longer a tool that only reports waits for the last of the others.
std::chrono::milliseconds ToolLauncher::delayLeft() const {
  const auto waited = std::chrono::floor<std::chrono::milliseconds>(Clock::now() - previousStarted_);
  return std::clamp(longestDelay_ - waited, std::chrono::milliseconds(0), longestDelay_);
}

bool ToolLauncher::start(const std::string& path, const std::vector<std::string>& arguments,
                         const Descriptor& output) {
  const bool reports = static_cast<bool>(output);
  const std::shared_ptr<const Descriptor> held = held_.lock();
  ToolProcess tool{.program = root_.onDisk(path),
                   .words = {path},
                   .environment = {kSearchPath},
                   .output = aboveOwnDescriptors(output),
                   .earlier = aboveOwnDescriptors(previous_),
                   .longestWait = std::nullopt,
                   .held = held ? aboveOwnDescriptors(*held) : Descriptor(),
                   .report = Descriptor()};
  const bool hasAll = (!output || tool.output) && (!previous_ || tool.earlier) && (!held || tool.held);
  if (!hasAll || !isProgram(tool.program)) return false;
  tool.words.insert(tool.words.end(), arguments.begin(), arguments.end());
  if (!root_.folder().empty()) tool.environment.push_back("NORVIK_ROOT=" + root_.folder());
  if (reports) tool.longestWait = delayLeft();
  const auto launch = std::make_shared<Launch>(Launch{{.tool = path, .arguments = arguments, .words = ""}});
  if (!run(tool, reports, launch)) return false;
  reported_.push_back(launch);
  return true;
}

bool ToolLauncher::run(ToolProcess& tool, bool reports, const std::shared_ptr<Launch>& launch) {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  Descriptor reading(ends[0]);
  tool.report = aboveOwnDescriptors(Descriptor(ends[1]));
  if (!tool.report) return false;
  {
    const std::lock_guard lock(running_->mutex);
    if (running_->count > 0) launch->outcome.end = ToolOutcome::End::waiting;
  }
  // The thread comes first, because a child that nobody reaps could not be undone.
  const auto child = std::make_shared<std::promise<pid_t>>();
  const bool ready = startThread(
      [running = running_, launch, report = std::move(reading), pid = child->get_future()]() mutable {
        if (const pid_t started = pid.get(); started > 0)
          follow(started, std::move(report), running->mutex, launch->outcome);
        running->add(-1);
      });
  if (!ready) return false;
  running_->add(1);
  const pid_t pid = startProcess(tool);
  // Before the thread knows of the child and can reap it, so that the number is still its own.
  if (pid > 0 && !reports) {
    previous_ = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    previousStarted_ = Clock::now();
  }
  tool.report.reset();
  child->set_value(pid);
  return pid > 0;
}

bool ToolLauncher::wait(std::chrono::milliseconds limit) {
  std::unique_lock lock(running_->mutex);
  return running_->changed.wait_for(lock, limit, [this] { return running_->count == 0; });
}

std::vector<ToolOutcome> ToolLauncher::outcomes() {
  const std::lock_guard lock(running_->mutex);
  std::vector<ToolOutcome> result;
  result.reserve(reported_.size());
  for (const auto& launch : reported_) result.push_back(launch->outcome);
  return result;
}

}  // namespace norvik
