// The host application's platform interfaces over the toolkit.
#include "src/frontends/prefpane/appkit_platform.h"

#include <memory>

#import "src/frontends/prefpane/call.h"
#include "src/frontends/prefpane/input.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/window_texts.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/pane_texts.h"

namespace norvik::prefpane {

std::optional<Rect> AppKitApplication::mainWindowFrame() {
  NSWindow* window = [NSApp mainWindow];
  if (window == nil) return std::nullopt;
  const NSRect frame = [window frame];
  return Rect{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

void AppKitApplication::performOnMainThread(std::function<void()> operation, bool waitUntilDone) {
  NVKCall* call = [[[NVKCall alloc] initWithCopyOf:&operation] autorelease];
  [call performSelectorOnMainThread:@selector(call) withObject:nil waitUntilDone:waitUntilDone];
}

Color AppKitApplication::windowBackgroundColor() {
  NSColor* color = [[NSColor windowBackgroundColor] colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  return {[color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]};
}

// The registration lives as long as the application; a pane that is gone is not notified. One that waits is
// notified afterwards, in the run loop's default mode: a pane that asks for a password looks inactive while
// the dialog is shown, and what it does at its activation must not come in between.
void AppKitApplication::observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) {
  const Function notify = [observer] {
    if (const auto held = observer.lock()) held->applicationDidBecomeActive();
  };
  NVKCall* later = [[NVKCall alloc] initWithCopyOf:&notify];
  const Function notifyOrWait = [=] {
    if (isWaiting()) {
      [later performSelector:@selector(call) withObject:nil afterDelay:0];
    } else {
      notify();
    }
  };
  NVKCall* call = [[NVKCall alloc] initWithCopyOf:&notifyOrWait];
  [[NSNotificationCenter defaultCenter] addObserver:call
                                           selector:@selector(call)
                                               name:NSApplicationDidBecomeActiveNotification
                                             object:NSApp];
}

int AppKitAlertPanels::NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                                       const char* alternateButton, const char* otherButton) {
  const auto button = [](const char* words) { return words != nullptr ? text(paneText(words)) : nil; };
  return static_cast<int>(::NSRunAlertPanel(text(paneText(title)), @"%@", button(defaultButton),
                                            button(alternateButton), button(otherButton),
                                            text(paneText(message))));
}

void AppKitWorkspace::openURL(std::string_view url) {
  NSURL* address = [NSURL URLWithString:text(url)];
  if (address != nil && [[NSWorkspace sharedWorkspace] openURL:address]) return;
  const std::string words = translated(window_texts::kNoBrowserText) + "\n" + std::string(url);
  AppKitAlertPanels().NSRunAlertPanel(window_texts::kNoBrowserTitle.data(), words.c_str(),
                                      window_texts::kClose.data(), nullptr, nullptr);
}

void AppKitNotifications::postNotificationName(const char* name, const char* object, unsigned options) {
  @try {
    postNotification(text(name), object != nullptr ? text(object) : nil, options);
  } @catch (...) {  // one of a class ends the program with this compiler
    // No notification centre is running, so nobody listens there.
  }
  computer_.postNotificationName(name, object, options);
}

namespace {

struct Timer {
  NSTimer* timer;
};

Timer* timerOf(CFRunLoopTimerRef timer) {
  return reinterpret_cast<Timer*>(timer);
}

}  // namespace

CFRunLoopTimerRef AppKitRunLoop::CFRunLoopTimerCreate(double fireDate, double interval,
                                                      CFRunLoopTimerCallBack callback,
                                                      const CFRunLoopTimerContext& context) {
  auto* made = new Timer{nil};
  const auto reference = reinterpret_cast<CFRunLoopTimerRef>(made);
  AppKitRunLoop* loop = this;
  void* info = context.info;
  const Function fire = [=] {
    callback(reference, info);
    if (loop->ticked) loop->ticked();
  };
  NVKCall* call = [[NVKCall alloc] initWithCopyOf:&fire];
  made->timer = [[NSTimer alloc] initWithFireDate:[NSDate dateWithTimeIntervalSinceReferenceDate:fireDate]
                                         interval:interval
                                           target:call
                                         selector:@selector(call)
                                         userInfo:nil
                                          repeats:YES];
  [call release];
  return reference;
}

void AppKitRunLoop::CFRunLoopAddTimer(CFRunLoopTimerRef timer) {
  [[NSRunLoop mainRunLoop] addTimer:timerOf(timer)->timer forMode:NSDefaultRunLoopMode];
}

void AppKitRunLoop::CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  [timerOf(timer)->timer invalidate];
}

void AppKitRunLoop::CFRelease(CFRunLoopTimerRef timer) {
  [timerOf(timer)->timer release];
  delete timerOf(timer);
}

void AppKitRunLoop::runOnceInDefaultMode() {
  dropInput();
  [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantPast]];
}

void AppKitProcesses::usleep(uint32_t microseconds) {
  constexpr double kMicroseconds = 1e6;
  waitDroppingInput(microseconds / kMicroseconds / speed_);
}

}  // namespace norvik::prefpane
