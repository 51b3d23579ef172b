// Timers and when they fire.
#include "src/adapters/simulated/run_loop.h"

namespace norvik {

struct SimulatedRunLoop::Timer {
  double nextDate;
  double interval;
  CFRunLoopTimerCallBack callback;
  void* info;
  int number;
  bool added = false;
  bool valid = true;
  bool owned = true;  // by the caller, who has not released it yet

  bool runs() const { return added && valid; }
  std::string name() const {
    const char* missing = !owned   ? "not invalidated"
                          : runs() ? "neither invalidated nor released"
                                   : "not released";
    return "timer " + std::to_string(number) + ", " + missing;
  }
};

SimulatedRunLoop::SimulatedRunLoop(const SimulatedClock& clock, const EffectReporter& effects)
    : clock_(clock), effects_(effects) {}

SimulatedRunLoop::~SimulatedRunLoop() = default;

SimulatedRunLoop::Timer* SimulatedRunLoop::find(CFRunLoopTimerRef ref) const {
  for (const auto& timer : timers_) {
    if (reinterpret_cast<CFRunLoopTimerRef>(timer.get()) == ref) return timer.get();
  }
  return nullptr;
}

std::optional<double> SimulatedRunLoop::runningInterval(CFRunLoopTimerRef ref) const {
  const Timer* timer = find(ref);
  if (timer == nullptr || !timer->runs()) return std::nullopt;
  return timer->interval;
}

bool SimulatedRunLoop::fire(CFRunLoopTimerRef ref) {
  Timer* timer = find(ref);
  if (timer == nullptr || !timer->runs()) return false;
  timer->nextDate = clock_.absoluteTime() + timer->interval;
  // Last, because the callback may release its timer.
  timer->callback(ref, timer->info);
  return true;
}

CFRunLoopTimerRef SimulatedRunLoop::CFRunLoopTimerCreate(double fireDate, double interval,
                                                         CFRunLoopTimerCallBack callback,
                                                         const CFRunLoopTimerContext& context) {
  if (!creationGranted_) return nullptr;
  timers_.push_back(
      std::make_unique<Timer>(Timer{fireDate, interval, callback, context.info, ++lastNumber_}));
  return reinterpret_cast<CFRunLoopTimerRef>(timers_.back().get());
}

void SimulatedRunLoop::CFRunLoopAddTimer(CFRunLoopTimerRef ref) {
  if (Timer* timer = find(ref)) timer->added = true;
}

void SimulatedRunLoop::CFRunLoopTimerInvalidate(CFRunLoopTimerRef ref) {
  if (Timer* timer = find(ref)) timer->valid = false;
  forgetUnneeded();
}

void SimulatedRunLoop::CFRelease(CFRunLoopTimerRef ref) {
  if (Timer* timer = find(ref)) timer->owned = false;
  forgetUnneeded();
}

void SimulatedRunLoop::forgetUnneeded() {
  std::erase_if(timers_, [](const auto& timer) { return !timer->owned && !timer->runs(); });
}

std::map<CFRunLoopTimerRef, std::string> SimulatedRunLoop::timers() const {
  std::map<CFRunLoopTimerRef, std::string> named;
  for (const auto& timer : timers_) {
    named.emplace(reinterpret_cast<CFRunLoopTimerRef>(timer.get()), timer->name());
  }
  return named;
}

void SimulatedRunLoop::runOnceInDefaultMode() {
  effects_.report(EffectKind::runLoop, "run-loop");
  if (!firesInPasses_) return;
  std::vector<CFRunLoopTimerRef> due;
  for (const auto& timer : timers_) {
    if (timer->nextDate <= clock_.absoluteTime())
      due.push_back(reinterpret_cast<CFRunLoopTimerRef>(timer.get()));
  }
  for (const CFRunLoopTimerRef timer : due) fire(timer);
}

}  // namespace norvik
