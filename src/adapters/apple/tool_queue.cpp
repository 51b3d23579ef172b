// One thread follows the queue while there is anything in it; a tool that is read has a thread of its own.
#include "src/adapters/apple/tool_queue.h"

#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

#include "src/adapters/apple/process_table.h"
#include "src/adapters/posix/threads.h"

namespace norvik {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kCouldNotStart = 127;  // as shells do for a program that cannot be run
constexpr int kUnknownStatus = -1;   // of a tool whose end somebody else has taken

}  // namespace

// A tool that was launched, and what is known of it.
struct ToolQueue::Launch {
  PrivilegedTool tool;
  ToolOutcome outcome;
  std::optional<pid_t> child;
  std::shared_ptr<const Descriptor> held;  // until the tool has ended
};

struct ToolQueue::State {
  std::mutex mutex;  // for all below
  std::condition_variable changed;
  std::deque<std::shared_ptr<Launch>> queue;  // those that have not ended; only the first has begun
  int reporting = 0;                          // tools that are read and have not ended
  bool isStarting = false;                    // one at a time: a launch is known by the child that it adds
  Clock::time_point lastLaunch;
  std::vector<std::shared_ptr<Launch>> reported;  // since the last `forget`
  std::weak_ptr<const Descriptor> held;

  std::shared_ptr<Launch> made(const PrivilegedTool& tool);
  OSStatus start(std::unique_lock<std::mutex>& lock, Launch& launch, std::FILE** pipe);
  void takeEnd(Launch& launch);
  bool next();
  void follow();
};

// With the mutex held.
std::shared_ptr<ToolQueue::Launch> ToolQueue::State::made(const PrivilegedTool& tool) {
  auto launch = std::make_shared<Launch>();
  launch->tool = tool;
  launch->outcome.tool = tool.path;
  launch->outcome.arguments = tool.arguments;
  launch->held = held.lock();
  return launch;
}

// With the mutex held, which is given up meanwhile, as it may take long.
OSStatus ToolQueue::State::start(std::unique_lock<std::mutex>& lock, Launch& launch, std::FILE** pipe) {
  changed.wait(lock, [this] { return !isStarting; });
  isStarting = true;
  lock.unlock();
  const std::vector<pid_t> before = privilegedChildren();
  const OSStatus status = launch.tool.start(pipe);
  const auto child =
      status == errAuthorizationSuccess ? newChild(before, privilegedChildren()) : std::nullopt;
  lock.lock();
  launch.child = child;
  isStarting = false;
  changed.notify_all();
  return status;
}

// Waits for this child alone: the others are the host's. Without the mutex.
void ToolQueue::State::takeEnd(Launch& launch) {
  int status = 0;
  pid_t taken = -1;
  if (launch.child) {
    do {
      taken = ::waitpid(*launch.child, &status, 0);
    } while (taken < 0 && errno == EINTR);
  }
  const std::lock_guard lock(mutex);
  ToolOutcome& outcome = launch.outcome;
  const bool killed = taken > 0 && WIFSIGNALED(status);
  outcome.end = killed ? ToolOutcome::End::killed : ToolOutcome::End::exited;
  if (taken > 0) {
    outcome.status = killed ? WTERMSIG(status) : WEXITSTATUS(status);
  } else {
    outcome.status = kUnknownStatus;
    outcome.words = "The system does not tell how it ended.";
  }
  launch.held.reset();
}

// Takes the first, which has ended, out of the queue, and starts the one after it. False at the end.
bool ToolQueue::State::next() {
  std::unique_lock lock(mutex);
  queue.pop_front();
  changed.notify_all();
  while (!queue.empty()) {
    const std::shared_ptr<Launch> first = queue.front();
    first->outcome.end = ToolOutcome::End::running;
    const OSStatus status = start(lock, *first, nullptr);
    if (status == errAuthorizationSuccess) return true;
    first->outcome.end = ToolOutcome::End::exited;
    first->outcome.status = kCouldNotStart;
    first->outcome.words = "It was not started: error " + std::to_string(status) + ".";
    first->held.reset();
    queue.pop_front();
    changed.notify_all();
  }
  return false;
}

// Until the queue is empty.
void ToolQueue::State::follow() {
  do {
    std::shared_ptr<Launch> first;
    {
      const std::lock_guard lock(mutex);
      first = queue.front();
    }
    takeEnd(*first);
  } while (next());
}

ToolQueue::ToolQueue(std::chrono::milliseconds longestDelay, std::chrono::milliseconds longestEnd)
    : state_(std::make_shared<State>()), longestDelay_(longestDelay), longestEnd_(longestEnd) {}

ToolQueue::~ToolQueue() {
  finish();
}

OSStatus ToolQueue::launch(PrivilegedTool tool) {
  std::unique_lock lock(state_->mutex);
  const std::shared_ptr<Launch> launch = state_->made(tool);
  const bool isFirst = state_->queue.empty();
  launch->outcome.end = isFirst ? ToolOutcome::End::running : ToolOutcome::End::waiting;
  state_->queue.push_back(launch);
  state_->lastLaunch = Clock::now();
  if (!isFirst) {
    state_->reported.push_back(launch);
    return errAuthorizationSuccess;
  }
  const OSStatus status = state_->start(lock, *launch, nullptr);
  if (status != errAuthorizationSuccess) {
    state_->queue.pop_front();
    return status;
  }
  state_->reported.push_back(launch);
  lock.unlock();
  // Where no thread can be made, the launch blocks rather than lose the order.
  if (!startThread([state = state_] { state->follow(); })) state_->follow();
  return status;
}

OSStatus ToolQueue::launchAndRead(const PrivilegedTool& tool, std::FILE*& pipe) {
  std::unique_lock lock(state_->mutex);
  const auto latest = state_->lastLaunch + longestDelay_;
  state_->changed.wait_until(lock, latest, [this] { return state_->queue.empty(); });
  const std::shared_ptr<Launch> launch = state_->made(tool);
  const OSStatus status = state_->start(lock, *launch, &pipe);
  if (status != errAuthorizationSuccess) return status;
  ++state_->reporting;
  state_->reported.push_back(launch);
  lock.unlock();
  const auto takeEnd = [state = state_, launch] {
    state->takeEnd(*launch);
    const std::lock_guard ended(state->mutex);
    --state->reporting;
    state->changed.notify_all();
  };
  if (!startThread(takeEnd)) {
    // It cannot be waited for here: it may not end before its output is read.
    lock.lock();
    --state_->reporting;
    launch->outcome.end = ToolOutcome::End::exited;
    launch->outcome.status = kUnknownStatus;
  }
  return status;
}

void ToolQueue::finish() {
  std::unique_lock lock(state_->mutex);
  const auto noneWaits = [this] { return state_->queue.size() <= 1; };
  state_->changed.wait_for(lock, longestEnd_, noneWaits);
  while (!noneWaits()) {
    ToolOutcome& outcome = state_->queue.back()->outcome;
    outcome.end = ToolOutcome::End::exited;
    outcome.status = kCouldNotStart;
    outcome.words = "It was not started: those before it did not end in time.";
    state_->queue.back()->held.reset();
    state_->queue.pop_back();
  }
  state_->changed.wait(lock, [this] { return !state_->isStarting; });
}

void ToolQueue::keepOpen(std::weak_ptr<const Descriptor> held) {
  const std::lock_guard lock(state_->mutex);
  state_->held = std::move(held);
}

void ToolQueue::forget() {
  const std::lock_guard lock(state_->mutex);
  state_->reported.clear();
}

bool ToolQueue::wait(std::chrono::milliseconds limit) {
  std::unique_lock lock(state_->mutex);
  return state_->changed.wait_for(lock, limit,
                                  [this] { return state_->queue.empty() && state_->reporting == 0; });
}

std::vector<ToolOutcome> ToolQueue::outcomes() {
  const std::lock_guard lock(state_->mutex);
  std::vector<ToolOutcome> result;
  result.reserve(state_->reported.size());
  for (const auto& launch : state_->reported) result.push_back(launch->outcome);
  return result;
}

}  // namespace norvik
