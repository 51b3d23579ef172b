// A run loop with real timers, for front ends without a run loop of their own.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

#include "src/adapters/posix/descriptors.h"
#include "src/server/mac/platform/run_loop.h"

namespace norvik {

class LinuxRunLoop : public RunLoop {
 public:
  using Clock = std::chrono::steady_clock;

  LinuxRunLoop();

  // A timer that is late fires once, and next at the first of its dates that is still to come. It does not
  // fire again within its own callback. With an interval of 0 or less it fires once and is then invalid.
  CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval, CFRunLoopTimerCallBack callback,
                                         const CFRunLoopTimerContext& context) override;
  void CFRunLoopAddTimer(CFRunLoopTimerRef timer) override;
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) override;
  // A timer that was added and is still valid continues to fire.
  void CFRelease(CFRunLoopTimerRef timer) override;
  void runOnceInDefaultMode() override;

  // Calls `operation` in the next pass. On any thread.
  void perform(std::function<void()> operation);

  // Runs passes as they become due until `end`, or until stop; at least one pass.
  void run(Clock::time_point end);
  void runFor(Clock::duration time) { run(Clock::now() + time); }
  // Until stop.
  void run() { run(Clock::time_point::max()); }
  // Ends the current run, or the next one if there is none. On any thread, and in signal handlers.
  void stop();

 private:
  struct Timer {
    Clock::time_point next;
    Clock::duration interval;
    CFRunLoopTimerCallBack callback = nullptr;
    void* info = nullptr;
    bool isAdded = false;
    bool isValid = true;
    bool isOwned = true;  // by the caller, who has not released it yet
    bool isFiring = false;

    bool canFire() const { return isAdded && isValid && !isFiring; }
    bool isNeeded() const { return isOwned || (isAdded && isValid); }
  };
  // A timer's reference is really its number, in the order in which they were made.
  using Timers = std::map<CFRunLoopTimerRef, Timer>;

  void fire(CFRunLoopTimerRef timer);
  void forgetUnlessNeeded(Timers::iterator timer);
  void callPerformed();
  void wait(Clock::time_point end);
  Clock::time_point nextDate() const;

  Timers timers_;
  std::uintptr_t lastNumber_ = 0;
  std::mutex mutex_;  // of performed_ alone; all else belongs to the main thread
  std::vector<std::function<void()>> performed_;
  std::atomic<bool> isStopped_ = false;
  Descriptor wakeUp_;  // readable when a wait must end
};

// The present time of run loops: seconds since 2001-01-01T00:00:00Z.
double absoluteTime();

}  // namespace norvik
