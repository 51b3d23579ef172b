// The platform's run loop of the main thread.
#pragma once

#include "src/server/mac/platform/run_loop.h"

namespace norvik {

// A timer is the platform's own object, and no wrapper of it: the reference that a callback is given is the
// one that was handed out.
class AppleRunLoop : public RunLoop {
 public:
  CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval, CFRunLoopTimerCallBack callback,
                                         const CFRunLoopTimerContext& context) override;
  void CFRunLoopAddTimer(CFRunLoopTimerRef timer) override;
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) override;
  void CFRelease(CFRunLoopTimerRef timer) override;
  // Takes events from the window server and dispatches none: they come afterwards.
  void runOnceInDefaultMode() override;
};

}  // namespace norvik
