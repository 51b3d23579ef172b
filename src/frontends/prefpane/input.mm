// Events taken from the application's queue, and dropped if a person made them.
#include "src/frontends/prefpane/input.h"

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

namespace {

constexpr double kLook = 0.02;  // seconds between two looks at a condition

int waits = 0;  // one within another

constexpr NSUInteger kInput = NSLeftMouseDownMask | NSLeftMouseUpMask | NSLeftMouseDraggedMask |
                              NSRightMouseDownMask | NSRightMouseUpMask | NSRightMouseDraggedMask |
                              NSOtherMouseDownMask | NSOtherMouseUpMask | NSOtherMouseDraggedMask |
                              NSKeyDownMask | NSKeyUpMask | NSScrollWheelMask;

bool isInput(NSEvent* event) {
  return (kInput & NSEventMaskFromType([event type])) != 0 || isCloseRequest(event);
}

// In a mode in which only what draws is handled: the pane's own timers wait.
NSEvent* nextEvent(NSUInteger mask, NSDate* limit) {
  return [NSApp nextEventMatchingMask:mask untilDate:limit inMode:NSEventTrackingRunLoopMode dequeue:YES];
}

// Events that are not in the mask stay where they are.
void handleEvents(NSUInteger mask, double seconds) {
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  ++waits;
  NSDate* end = [NSDate dateWithTimeIntervalSinceNow:seconds];
  do {
    NSEvent* event = nextEvent(mask, end);
    if (event != nil && !isInput(event)) [NSApp sendEvent:event];
  } while ([end timeIntervalSinceNow] > 0);
  --waits;
  [pool release];
}

}  // namespace

bool isWaiting() {
  return waits > 0;
}

void dropInput() {
  while ([NSApp nextEventMatchingMask:kInput
                            untilDate:[NSDate distantPast]
                               inMode:NSDefaultRunLoopMode
                              dequeue:YES] != nil) {
  }
}

void waitDroppingInput(double seconds) {
  handleEvents(NSAnyEventMask, seconds);
}

bool waitKeepingInput(const std::function<bool()>& condition, double limit) {
  // A click on a close button is one of the toolkit's own events.
  constexpr NSUInteger kHandled = NSAnyEventMask & ~(kInput | NSAppKitDefinedMask);
  for (double waited = 0; !condition(); waited += kLook) {
    if (waited >= limit) return false;
    handleEvents(kHandled, kLook);
  }
  return true;
}

}  // namespace norvik::prefpane
