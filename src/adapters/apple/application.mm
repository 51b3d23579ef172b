// The host application's platform interfaces over the toolkit.
#include "src/adapters/apple/application.h"

#include <array>

#include "src/adapters/apple/system_call.h"

#import <AppKit/AppKit.h>
#import <Foundation/NSDistributedNotificationCenter.h>

#import "src/adapters/apple/call.h"
#import "src/adapters/apple/foundation.h"

namespace norvik {

namespace {

using apple::Pool;
using apple::text;

NVKAdapterCall* callOf(const std::function<void()>& operation) {
  return [[NVKAdapterCall alloc] initWithCopyOf:&operation];
}

NSString* words(const char* bytes) {
  return bytes != nullptr ? text(bytes) : nil;
}

// A colour of a catalogue or a pattern has no components of its own; nil where it cannot be converted.
NSColor* inComponents(NSColor* color) {
  return [color colorUsingColorSpace:[NSColorSpace genericRGBColorSpace]];
}

// The answers of an NSAlert in the order of its buttons, which is the order of the panel's.
constexpr int kFirstAnswer = 1000;
constexpr std::array kResults{NSAlertDefaultReturn, NSAlertAlternateReturn, NSAlertOtherReturn};

// With the buttons that were asked for, each with its result.
int runAlert(NSAlert* alert, const std::array<NSString*, 3>& buttons) {
  std::array<int, 3> results{};
  std::size_t count = 0;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    if (buttons[i] == nil) continue;
    [alert addButtonWithTitle:buttons[i]];
    results[count++] = kResults[i];
  }
  if (count == 0) results[count++] = NSAlertDefaultReturn;  // the toolkit's own "OK"
  const auto answer = static_cast<std::size_t>([alert runModal] - kFirstAnswer);
  return answer < count ? results[answer] : NSAlertOtherReturn;
}

// On a system without NSAlert. The message is a format there.
int runPanel(const char* title, const char* message, const std::array<NSString*, 3>& buttons) {
  using Call = NSInteger(NSString*, NSString*, NSString*, NSString*, NSString*, ...);
  auto* call = systemCall<Call>("NSRunAlertPanel");
  if (call == nullptr) return NSAlertOtherReturn;
  return static_cast<int>(call(words(title), @"%@", buttons[0], buttons[1], buttons[2], words(message)));
}

}  // namespace

std::optional<Rect> AppleApplication::mainWindowFrame() {
  NSWindow* window = [NSApp mainWindow];
  if (window == nil) return std::nullopt;
  const NSRect frame = [window frame];
  return Rect{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

void AppleApplication::performOnMainThread(std::function<void()> operation, bool waitUntilDone) {
  NVKAdapterCall* call = [callOf(operation) autorelease];
  [call performSelectorOnMainThread:@selector(call) withObject:nil waitUntilDone:waitUntilDone];
}

Color AppleApplication::windowBackgroundColor() {
  const Pool pool;
  NSColor* color = inComponents([NSColor windowBackgroundColor]);
  if (color == nil) return kClearColor;
  return {[color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]};
}

// The centre does not retain it, so that it is kept here on purpose: the registration lives as long as the
// application; a pane that is gone is not notified.
void AppleApplication::observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) {
  const std::function<void()> notify = [observer] {
    if (const auto held = observer.lock()) held->applicationDidBecomeActive();
  };
  [[NSNotificationCenter defaultCenter] addObserver:callOf(notify)
                                           selector:@selector(call:)
                                               name:NSApplicationDidBecomeActiveNotification
                                             object:NSApp];
}

int AppleAlertPanels::NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                                      const char* alternateButton, const char* otherButton) {
  const Pool pool;
  const std::array buttons{words(defaultButton), words(alternateButton), words(otherButton)};
  const Class known = NSClassFromString(@"NSAlert");
  if (known == Nil) return runPanel(title, message, buttons);
  NSAlert* alert = [[[known alloc] init] autorelease];
  if (title != nullptr) [alert setMessageText:words(title)];
  if (message != nullptr) [alert setInformativeText:words(message)];
  return runAlert(alert, buttons);
}

void AppleWorkspace::openURL(std::string_view url) {
  const Pool pool;
  NSURL* address = [NSURL URLWithString:text(url)];
  if (address != nil) [[NSWorkspace sharedWorkspace] openURL:address];
}

void AppleNotificationCenter::postNotificationName(const char* name, const char* object, unsigned options) {
  const Pool pool;
  lastWasTaken_ = true;
  @try {
    [[NSDistributedNotificationCenter defaultCenter] postNotificationName:words(name)
                                                                   object:words(object)
                                                                 userInfo:nil
                                                                  options:options];
  } @catch (...) {
    lastWasTaken_ = false;  // no centre runs, so nobody listens there
  }
}

void AppleDrawing::display(Control& control) {
  if (viewOfControl) [static_cast<NSView*>(viewOfControl(control)) display];
}

void AppleDrawing::displayIfNeeded(View& view) {
  if (viewOfView) [static_cast<NSView*>(viewOfView(view)) displayIfNeeded];
}

}  // namespace norvik
