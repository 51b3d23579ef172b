// Looks for a panel at intervals, as a panel runs the loop in a mode of its own.
#import "tests/frontends/prefpane/in_panel.h"

#include <gtest/gtest.h>

#include <utility>

#import "src/frontends/prefpane/call.h"
#include "src/frontends/prefpane/text.h"
#import "tests/frontends/prefpane/pane_under_test.h"

namespace norvik::prefpane {

void pressIn(NSView* contents, const std::string& title) {
  NSButton* button = buttonIn(contents, text(title));
  ASSERT_NE(button, (NSButton*)nil) << title;
  [button performClick:nil];
}

InPanel::InPanel(std::function<void(NSView* contents)> act) : act_(std::move(act)) {
  const Function function = [this] { look(); };
  NVKCall* call = [[[NVKCall alloc] initWithCopyOf:&function] autorelease];
  NSTimer* timer = [NSTimer timerWithTimeInterval:0.05
                                           target:call
                                         selector:@selector(call)
                                         userInfo:nil
                                          repeats:YES];
  [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSModalPanelRunLoopMode];
  timer_ = Handle(timer);
}

InPanel::InPanel(const std::string& button)
    : InPanel([button](NSView* contents) { pressIn(contents, button); }) {}

InPanel::~InPanel() {
  [static_cast<NSTimer*>(timer_.get()) invalidate];
}

void InPanel::look() {
  NSWindow* panel = [NSApp modalWindow];
  if (panel == nil || seen > 0) return;
  ++seen;
  find([panel contentView], [this](NSView* view) {
    if ([view isKindOfClass:[NSTextField class]]) words += utf8([(NSTextField*)view stringValue]) + "\n";
    if ([view isKindOfClass:[NSTextView class]]) words += utf8([(NSTextView*)view string]) + "\n";
    return false;
  });
  act_([panel contentView]);
  // A panel that waits for events notices the pressed button only at the next one.
  [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0]
           atStart:NO];
}

}  // namespace norvik::prefpane
