// Timers on the steady clock; waits poll an event, so that they can be ended early.
#include "src/adapters/linux/run_loop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace norvik {

namespace {

using Clock = LinuxRunLoop::Clock;

constexpr double kAbsoluteTimeOfEpoch = -978307200;  // 1970-01-01 in seconds from 2001-01-01
constexpr double kFarAway = 100.0 * 365 * 86400;     // seconds; a date beyond it never comes

// Rounded to the clock's resolution, within its range.
Clock::duration seconds(double count) {
  const std::chrono::duration<double> bounded(std::clamp(count, -kFarAway, kFarAway));
  return std::chrono::duration_cast<Clock::duration>(bounded);
}

// The milliseconds to poll for, rounded up so that the timer is due afterwards.
int milliseconds(Clock::duration left) {
  const auto count = std::chrono::ceil<std::chrono::milliseconds>(left).count();
  return static_cast<int>(std::clamp<int64_t>(count, 0, std::numeric_limits<int>::max()));
}

}  // namespace

double absoluteTime() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return kAbsoluteTimeOfEpoch + std::chrono::duration<double>(sinceEpoch).count();
}

LinuxRunLoop::LinuxRunLoop() : wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

CFRunLoopTimerRef LinuxRunLoop::CFRunLoopTimerCreate(double fireDate, double interval,
                                                     CFRunLoopTimerCallBack callback,
                                                     const CFRunLoopTimerContext& context) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): never dereferenced
  const auto timer = reinterpret_cast<CFRunLoopTimerRef>(++lastNumber_);
  timers_[timer] = {.next = Clock::now() + seconds(fireDate - absoluteTime()),
                    .interval = seconds(interval),
                    .callback = callback,
                    .info = context.info};
  return timer;
}

void LinuxRunLoop::CFRunLoopAddTimer(CFRunLoopTimerRef timer) {
  const auto found = timers_.find(timer);
  if (found != timers_.end()) found->second.isAdded = true;
}

void LinuxRunLoop::CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  const auto found = timers_.find(timer);
  if (found == timers_.end()) return;
  found->second.isValid = false;
  forgetUnlessNeeded(found);
}

void LinuxRunLoop::CFRelease(CFRunLoopTimerRef timer) {
  const auto found = timers_.find(timer);
  if (found == timers_.end()) return;
  found->second.isOwned = false;
  forgetUnlessNeeded(found);
}

void LinuxRunLoop::forgetUnlessNeeded(Timers::iterator timer) {
  if (!timer->second.isNeeded()) timers_.erase(timer);
}

void LinuxRunLoop::fire(CFRunLoopTimerRef timer) {
  const auto found = timers_.find(timer);
  if (found == timers_.end() || !found->second.canFire()) return;
  Timer& due = found->second;
  if (due.interval > Clock::duration::zero()) {
    const auto missed = (Clock::now() - due.next) / due.interval;
    due.next += (missed + 1) * due.interval;
  } else {
    due.isValid = false;
  }
  due.isFiring = true;
  due.callback(timer, due.info);
  // The callback may have ended its own timer.
  const auto still = timers_.find(timer);
  if (still == timers_.end()) return;
  still->second.isFiring = false;
  forgetUnlessNeeded(still);
}

void LinuxRunLoop::callPerformed() {
  std::vector<std::function<void()>> operations;
  {
    const std::lock_guard lock(mutex_);
    operations.swap(performed_);
  }
  for (const auto& operation : operations) operation();
}

void LinuxRunLoop::runOnceInDefaultMode() {
  callPerformed();
  // Chosen before any is fired: timers that become due meanwhile fire in the next pass.
  std::vector<std::pair<Clock::time_point, CFRunLoopTimerRef>> due;
  const auto now = Clock::now();
  for (const auto& [ref, timer] : timers_) {
    if (timer.canFire() && timer.next <= now) due.emplace_back(timer.next, ref);
  }
  std::sort(due.begin(), due.end());
  for (const auto& [date, ref] : due) fire(ref);
}

void LinuxRunLoop::perform(std::function<void()> operation) {
  {
    const std::lock_guard lock(mutex_);
    performed_.push_back(std::move(operation));
  }
  ::eventfd_write(wakeUp_.number(), 1);
}

void LinuxRunLoop::stop() {
  const int error = errno;  // a signal handler must not change it
  isStopped_ = true;
  ::eventfd_write(wakeUp_.number(), 1);
  errno = error;
}

Clock::time_point LinuxRunLoop::nextDate() const {
  auto next = Clock::time_point::max();
  for (const auto& [ref, timer] : timers_) {
    if (timer.canFire()) next = std::min(next, timer.next);
  }
  return next;
}

void LinuxRunLoop::wait(Clock::time_point end) {
  const auto until = std::min(end, nextDate());
  pollfd event{wakeUp_.number(), POLLIN, 0};
  const bool isForEver = until == Clock::time_point::max();
  ::poll(&event, 1, isForEver ? -1 : milliseconds(until - Clock::now()));
  eventfd_t count = 0;
  ::eventfd_read(wakeUp_.number(), &count);
}

void LinuxRunLoop::run(Clock::time_point end) {
  do {
    runOnceInDefaultMode();
    if (isStopped_) break;
    wait(end);
  } while (!isStopped_ && Clock::now() < end);
  isStopped_ = false;
}

}  // namespace norvik
