// Each timer carries a block with the caller's function, which ends with the timer.
#include "src/adapters/apple/run_loop.h"

#include <CoreFoundation/CoreFoundation.h>

namespace norvik {

namespace {

struct Target {
  CFRunLoopTimerCallBack callback;
  void* info;
};

::CFRunLoopTimerRef core(CFRunLoopTimerRef timer) {
  return reinterpret_cast<::CFRunLoopTimerRef>(timer);
}

// The callback may invalidate its own timer, which ends the block at once: what is needed is copied before.
void fire(::CFRunLoopTimerRef timer, void* block) {
  const Target target = *static_cast<const Target*>(block);
  target.callback(reinterpret_cast<CFRunLoopTimerRef>(timer), target.info);
}

void endTarget(const void* block) {
  delete static_cast<const Target*>(block);
}

}  // namespace

CFRunLoopTimerRef AppleRunLoop::CFRunLoopTimerCreate(double fireDate, double interval,
                                                     CFRunLoopTimerCallBack callback,
                                                     const CFRunLoopTimerContext& context) {
  auto* target = new Target{callback, context.info};
  ::CFRunLoopTimerContext own{0, target, nullptr, &endTarget, nullptr};
  const ::CFRunLoopTimerRef made = ::CFRunLoopTimerCreate(nullptr, fireDate, interval, 0, 0, &fire, &own);
  if (made == nullptr) delete target;
  return reinterpret_cast<CFRunLoopTimerRef>(made);
}

void AppleRunLoop::CFRunLoopAddTimer(CFRunLoopTimerRef timer) {
  ::CFRunLoopAddTimer(::CFRunLoopGetMain(), core(timer), kCFRunLoopDefaultMode);
}

void AppleRunLoop::CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  ::CFRunLoopTimerInvalidate(core(timer));
}

void AppleRunLoop::CFRelease(CFRunLoopTimerRef timer) {
  ::CFRelease(core(timer));
}

void AppleRunLoop::runOnceInDefaultMode() {
  ::CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, static_cast<Boolean>(true));
}

}  // namespace norvik
