// The sliders of the pages, operated by the toolkit's own events: every whole number of a range can be
// reached.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "src/frontends/prefpane/text.h"

#import "tests/frontends/prefpane/pane_under_test.h"

namespace norvik::prefpane {
namespace {

std::vector<int> wholeNumbersOf(NSSlider* slider) {
  std::vector<int> numbers(static_cast<std::size_t>([slider maxValue] - [slider minValue]) + 1);
  std::iota(numbers.begin(), numbers.end(), static_cast<int>([slider minValue]));
  return numbers;
}

// The pane in a window, showing the page of a user's image settings.
class Sliders : public testing::Test {
 protected:
  void SetUp() override {
    [pane_ loadMainView];
    [window_ setContentView:[pane_ mainView]];
    [window_ makeKeyAndOrderFront:nil];
    NSButton* defaults = button(pane_, @"Use the server's image settings");
    if ([defaults state] == NSOnState) [defaults performClick:nil];
    for (NSView* view : viewsOfPage()) {
      if ([view isKindOfClass:[NSSlider class]]) sliders.push_back((NSSlider*)view);
    }
    ASSERT_EQ(sliders.size(), 4U);
    ASSERT_TRUE([sliders[3] isEnabled]);
    ASSERT_EQ([sliders[3] maxValue], 72) << "the shadow size";
  }

  void TearDown() override {
    [window_ setContentView:nil];
    [window_ close];
    [pane_ release];
  }

  // The number beside a slider, which the pane took from it.
  int shown(NSSlider* slider) {
    for (NSView* view : viewsOfPage()) {
      const bool beside = NSMinX([view frame]) > NSMaxX([slider frame]) &&
                          std::abs(NSMidY([view frame]) - NSMidY([slider frame])) < 2;
      if (beside && [view isKindOfClass:[NSTextField class]]) return [(NSTextField*)view intValue];
    }
    return -1;
  }

  // Moves the knob there by a click, so many pixels from the slider's left end. Comes from the farther end,
  // as a click on the knob moves nothing.
  void moveTo(NSSlider* slider, CGFloat x) {
    const CGFloat width = NSWidth([slider bounds]);
    clickAt(slider, x < width / 2 ? width - 1 : 0);
    clickAt(slider, x);
  }

  void press(NSSlider* slider, unichar key) {
    NSString* characters = [NSString stringWithCharacters:&key length:1];
    [window_ makeFirstResponder:slider];
    [window_ sendEvent:[NSEvent keyEventWithType:NSKeyDown
                                              location:NSZeroPoint
                                         modifierFlags:0
                                             timestamp:0
                                          windowNumber:[window_ windowNumber]
                                               context:nil
                                            characters:characters
                           charactersIgnoringModifiers:characters
                                             isARepeat:NO
                                               keyCode:0]];
  }

  std::vector<NSSlider*> sliders;

 private:
  std::vector<NSView*> viewsOfPage() {
    std::vector<NSView*> views;
    find([[pagesOf(pane_) selectedTabViewItem] view], [&views](NSView* view) {
      views.push_back(view);
      return false;
    });
    return views;
  }

  void clickAt(NSSlider* slider, CGFloat x) {
    const NSPoint at = [slider convertPoint:NSMakePoint(x, NSMidY([slider bounds])) toView:nil];
    [NSApp postEvent:mouse(NSLeftMouseUp, at) atStart:NO];
    [slider mouseDown:mouse(NSLeftMouseDown, at)];
  }

  NSEvent* mouse(NSEventType type, NSPoint at) {
    return [NSEvent mouseEventWithType:type
                              location:at
                         modifierFlags:0
                             timestamp:0
                          windowNumber:[window_ windowNumber]
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1];
  }

  NSPreferencePane* pane_ = newPane();
  NSWindow* window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 600, 500)
                                                  styleMask:NSTitledWindowMask
                                                    backing:NSBackingStoreBuffered
                                                      defer:NO];
};

TEST_F(Sliders, TheMouseReachesEveryWholeNumber) {
  for (NSSlider* slider : sliders) {
    std::set<int> reached;
    for (CGFloat x = 0; x < NSWidth([slider bounds]); ++x) {
      moveTo(slider, x);
      reached.insert(shown(slider));
      EXPECT_EQ([slider doubleValue], shown(slider)) << "the knob is where the number is";
    }
    const std::vector<int> wanted = wholeNumbersOf(slider);
    EXPECT_EQ(std::vector<int>(reached.begin(), reached.end()), wanted);
  }
}

TEST_F(Sliders, TheArrowKeysReachEveryWholeNumber) {
  for (NSSlider* slider : sliders) {
    moveTo(slider, 0);
    std::vector<int> reached{shown(slider)};
    while (reached.size() < wholeNumbersOf(slider).size()) {
      press(slider, NSRightArrowFunctionKey);
      reached.push_back(shown(slider));
    }
    EXPECT_EQ(reached, wholeNumbersOf(slider));
    press(slider, NSRightArrowFunctionKey);
    EXPECT_EQ(shown(slider), [slider maxValue]) << "and no further";
    press(slider, NSLeftArrowFunctionKey);
    EXPECT_EQ(shown(slider), [slider maxValue] - 1);
  }
}

}  // namespace
}  // namespace norvik::prefpane
