// The main run loop, as the core's is: a timer that is late fires once and never within its own callback;
// what a timer carries ends when it is invalidated, even while it fires.
#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "tests/adapters/apple/doubles/doubles.h"
#include "tests/adapters/apple/doubles/objects.h"

namespace norvik::doubles {

namespace {

double now() {
  constexpr double kAbsoluteTimeOfEpoch = -978307200;
  const auto time = std::chrono::system_clock::now().time_since_epoch();
  return kAbsoluteTimeOfEpoch + std::chrono::duration<double>(time).count();
}

struct Timer : Object {
  Timer() : Object(kTimer) {}
  void end() override { invalidate(); }
  void invalidate() {
    if (!isValid) return;
    isValid = false;
    if (context.release != nullptr) context.release(context.info);
    context.info = nullptr;
  }

  double next = 0;
  double interval = 0;
  CFRunLoopTimerCallBack callback = nullptr;
  CFRunLoopTimerContext context{};
  bool isValid = true;
  bool isFiring = false;
};

std::vector<CFRunLoopTimerRef> added;
Text defaultMode("kCFRunLoopDefaultMode");
int theLoop = 0;

Timer* timerOf(CFRunLoopTimerRef timer, const char* call) {
  return live<Timer>(timer, kTimer, call);
}

void fire(CFRunLoopTimerRef reference) {
  Timer* timer = timerOf(reference, "firing");
  if (timer == nullptr || !timer->isValid || timer->isFiring) return;
  const double late = now() - timer->next;
  timer->next += (std::floor(late / timer->interval) + 1) * timer->interval;
  timer->isFiring = true;
  record("fire");
  timer->callback(reference, timer->context.info);
  timer->isFiring = false;
}

}  // namespace

void forgetTimers() {
  added.clear();
}

}  // namespace norvik::doubles

using namespace norvik::doubles;

extern "C" {

const CFRunLoopMode kCFRunLoopDefaultMode = reinterpret_cast<CFRunLoopMode>(&defaultMode);

CFRunLoopRef CFRunLoopGetMain(void) {
  return reinterpret_cast<CFRunLoopRef>(&theLoop);
}

CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime fireDate, CFTimeInterval interval,
                                       CFOptionFlags flags, CFIndex order, CFRunLoopTimerCallBack callout,
                                       CFRunLoopTimerContext* context) {
  if (flags != 0 || order != 0 || context->version != 0) violate("a timer with what must be 0");
  auto timer = std::make_unique<Timer>();
  timer->next = fireDate;
  timer->interval = interval;
  timer->callback = callout;
  timer->context = *context;
  record("CFRunLoopTimerCreate " + std::to_string(fireDate) + " " + std::to_string(interval));
  return static_cast<CFRunLoopTimerRef>(const_cast<void*>(keep(std::move(timer))));
}

void CFRunLoopAddTimer(CFRunLoopRef rl, CFRunLoopTimerRef timer, CFRunLoopMode mode) {
  if (rl != CFRunLoopGetMain() || mode != kCFRunLoopDefaultMode) violate("another loop or another mode");
  const Timer* valid = timerOf(timer, "CFRunLoopAddTimer");
  record("CFRunLoopAddTimer");
  if (valid == nullptr || !valid->isValid) return;
  CFRetain(timer);
  added.push_back(timer);
}

void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  Timer* valid = timerOf(timer, "CFRunLoopTimerInvalidate");
  record("CFRunLoopTimerInvalidate");
  if (valid == nullptr) return;
  valid->invalidate();
  if (const auto found = std::find(added.begin(), added.end(), timer); found != added.end()) {
    added.erase(found);
    CFRelease(timer);
  }
}

// A pass keeps the timers that it fires.
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds, Boolean) {
  constexpr CFRunLoopRunResult kTimedOut = 3;
  if (mode != kCFRunLoopDefaultMode || seconds != 0) violate("a pass that waits");
  record("CFRunLoopRunInMode");
  std::vector<CFRunLoopTimerRef> due;
  for (const CFRunLoopTimerRef timer : added) {
    if (timerOf(timer, "a pass")->next <= now()) due.push_back(timer);
  }
  for (const CFRunLoopTimerRef timer : due) CFRetain(timer);
  for (const CFRunLoopTimerRef timer : due) {
    fire(timer);
    CFRelease(timer);
  }
  return kTimedOut;
}

}  // extern "C"
