// The pane while the system asks a person for a password: its window is drawn, nothing is clicked or typed,
// and an activation waits.
#include <gtest/gtest.h>

#include "src/adapters/linux/linux_computer.h"
#include "src/frontends/prefpane/pane_computer.h"
#include "tests/support/polkit_stand_in.h"

#import "src/frontends/prefpane/appkit.h"
#import "src/frontends/prefpane/call.h"

// Counts what it draws and the clicks on it.
@interface NVKCountingButton : NSButton {
 @public
  int drawn;
  int clicks;
}
@end

@implementation NVKCountingButton
- (void)drawRect:(NSRect)dirty {
  ++drawn;
  [super drawRect:dirty];
}
- (void)mouseDown:(NSEvent*)event {
  ++clicks;
}
@end

namespace norvik::prefpane {
namespace {

class Activations : public ActivationObserver {
 public:
  void applicationDidBecomeActive() override { ++count; }
  int count = 0;
};

LinuxComputerOptions options() {
  LinuxComputerOptions options;
  options.systemRights = true;
  options.superUser = false;
  return options;
}

struct PaneAsking : testing::Test {
  PolkitStandIn polkit;
  PaneComputer computer{options()};
  NVKCountingButton* button =
      [[[NVKCountingButton alloc] initWithFrame:NSMakeRect(10, 10, 100, 30)] autorelease];
  NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 200, 100)
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];

  PaneAsking() {
    [window setReleasedWhenClosed:NO];
    [[window contentView] addSubview:button];
    [window makeKeyAndOrderFront:nil];
    run(0.1);
  }
  ~PaneAsking() override {
    [window close];
    [window release];
  }
  void run(double seconds) {
    NSDate* end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    do {
      NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                          untilDate:end
                                             inMode:NSDefaultRunLoopMode
                                            dequeue:YES];
      if (event != nil) [NSApp sendEvent:event];
    } while ([end timeIntervalSinceNow] > 0);
  }
  void click() {
    const NSPoint at = NSMakePoint(50, 25);
    [NSApp postEvent:[NSEvent mouseEventWithType:NSLeftMouseDown
                                        location:at
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:[window windowNumber]
                                         context:nil
                                     eventNumber:1
                                      clickCount:1
                                        pressure:1]
             atStart:NO];
  }
  OSStatus unlock() {
    AuthorizationService& service = platform().authorization;
    const AuthorizationItem right{"system.privilege.admin", "", 0};
    AuthorizationRef reference = nullptr;
    service.AuthorizationCreate({}, 0, reference);
    return service.AuthorizationCopyRights(reference, {&right, 1}, kAuthorizationFlagInteractionAllowed);
  }
};

TEST_F(PaneAsking, TheWindowIsDrawnClicksAreDroppedAndAnActivationWaits) {
  const auto observer = std::make_shared<Activations>();
  platform().application.observeDidBecomeActive(observer);
  int passes = 0;
  int activationsWhileAsking = -1;
  const Function pass = [&] {
    [button setNeedsDisplay:YES];
    if (passes < 10) click();
    [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationDidBecomeActiveNotification
                                                        object:NSApp];
    if (++passes != 10) return;
    activationsWhileAsking = observer->count;
    polkit.answer(PolkitStandIn::Answer::granted);
  };
  NVKCall* call = [[[NVKCall alloc] initWithCopyOf:&pass] autorelease];
  NSTimer* timer = [NSTimer timerWithTimeInterval:0.01
                                           target:call
                                         selector:@selector(call)
                                         userInfo:nil
                                          repeats:YES];
  [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSEventTrackingRunLoopMode];
  button->drawn = 0;
  EXPECT_EQ(unlock(), errAuthorizationSuccess);
  [timer invalidate];
  EXPECT_EQ(polkit.questions(), 1);
  EXPECT_GE(passes, 10);
  EXPECT_GE(button->drawn, 3);
  EXPECT_EQ(activationsWhileAsking, 0);
  run(0.1);
  EXPECT_EQ(button->clicks, 0);
  EXPECT_GT(observer->count, 0);
  click();
  run(0.1);
  EXPECT_EQ(button->clicks, 1);
}

}  // namespace
}  // namespace norvik::prefpane
