// Platform interface to the run loop of the main thread. Called on the main thread only.
#pragma once

namespace norvik {

// A timer as the adapter knows it; opaque to the pane. Null is none.
using CFRunLoopTimerRef = struct RunLoopTimerOpaque*;

// What a fired timer calls: itself and the info pointer of its context.
using CFRunLoopTimerCallBack = void (*)(CFRunLoopTimerRef timer, void* info);

struct CFRunLoopTimerContext {
  int version = 0;
  void* info = nullptr;  // borrowed: the timer neither retains nor releases it
};

class RunLoop {
 public:
  virtual ~RunLoop() = default;

  // Makes a repeating timer that first fires at `fireDate` (seconds of absolute time, a past date meaning the
  // run loop's first pass after it was added) and then every `interval` seconds. The caller owns it and gives
  // it back with CFRelease. Null on failure.
  virtual CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval,
                                                 CFRunLoopTimerCallBack callback,
                                                 const CFRunLoopTimerContext& context) = 0;
  // Adds the timer to the main run loop in its default mode, the one in which it waits for ordinary events.
  virtual void CFRunLoopAddTimer(CFRunLoopTimerRef timer) = 0;
  // Stops the timer for good; it never fires again.
  virtual void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) = 0;
  // Releases the caller's ownership of the timer, which is invalid by then or was never added.
  virtual void CFRelease(CFRunLoopTimerRef timer) = 0;

  // Runs the loop once in the default mode with a limit date in the distant past: handles what is pending,
  // due timers included, and returns without waiting.
  virtual void runOnceInDefaultMode() = 0;
};

}  // namespace norvik
