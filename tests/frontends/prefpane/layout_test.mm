// The layout of the pages: nothing is cut with larger letters, the contents follow the width of the host,
// what is disabled looks so, and there is no gap where no address is.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/preview_view.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/server_state.h"
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/simulated_pane.h"

namespace norvik::prefpane {
namespace {

class Layout : public SimulatedPane {
 protected:
  NSView* content() { return static_cast<NSView*>(session->mainView()->view()); }
  NSTabView* pages() {
    return (NSTabView*)find(content(), [](NSView* one) { return [one isKindOfClass:[NSTabView class]]; });
  }
  NSView* viewOf(const std::string& outlet) {
    return static_cast<NSView*>(session->mainView()->viewOf(outlet));
  }
  // Every view of a page, and of the line below.
  std::vector<NSControl*> controls() {
    std::vector<NSControl*> all;
    const auto collect = [&all](NSView* one) {
      const bool known = [one isKindOfClass:[NSTextField class]] || [one isKindOfClass:[NSButton class]] ||
                         [one isKindOfClass:[NSSlider class]];
      if (known) all.push_back((NSControl*)one);
      return false;
    };
    for (NSInteger i = 0; i < [pages() numberOfTabViewItems]; ++i)
      find([[pages() tabViewItemAtIndex:i] view], collect);
    return all;
  }
  NSTextField* words(const std::string& outlet, const std::string& text) {
    NSView* page = [viewOf(outlet) superview];
    return (NSTextField*)find(page, [&text](NSView* one) {
      return [one isKindOfClass:[NSTextField class]] && utf8([(NSTextField*)one stringValue]) == text;
    });
  }
};

std::string nameOf(NSControl* control) {
  return [control isKindOfClass:[NSButton class]] ? utf8([(NSButton*)control title])
                                                  : utf8([control stringValue]);
}

// With letters of as many points as the variable NORVIK_LETTERS says, which the program has set.
class Letters : public Layout {
 protected:
  static int points() {
    const char* chosen = std::getenv("NORVIK_LETTERS");
    return chosen != nullptr ? std::atoi(chosen) : 12;
  }
};

TEST_F(Letters, OfAnySizeAreNotCut) {
  openEverything();
  ASSERT_EQ([[NSFont systemFontOfSize:0] pointSize], points());
  const CGFloat right = NSWidth([pages() frame]);
  std::string widest;
  for (NSControl* control : controls()) {
    if (NSMaxX([control frame]) >= right - 0.5 && [control autoresizingMask] == 0)
      widest += nameOf(control) + "; ";
  }
  EXPECT_LE(NSMaxX([pages() frame]), 568) << "the narrowest host; the widest are " << widest;
  int looked = 0;
  for (NSControl* control : controls()) {
    const std::string name = nameOf(control);
    SCOPED_TRACE(name);
    const NSRect frame = [control convertRect:[control bounds] toView:pages()];
    EXPECT_LE(NSMaxX(frame), right + 0.5);
    EXPECT_GE(NSMinX(frame), -kRoundedInset);
    EXPECT_LE(NSMaxY(frame), NSHeight([pages() frame]));
    const bool breaks = [control isKindOfClass:[NSTextField class]] && [[control cell] wraps];
    if (name.empty() || breaks || [control isKindOfClass:[NSPopUpButton class]]) continue;
    if ([(NSTextField*)control respondsToSelector:@selector(isEditable)] &&
        [(NSTextField*)control isEditable])
      continue;
    EXPECT_GE(NSWidth(frame) + 0.5, [[control cell] cellSize].width);
    EXPECT_GE(NSHeight(frame) + 0.5, std::floor([[control font] pointSize]));
    ++looked;
  }
  EXPECT_GT(looked, 30);
  for (const auto& row : pane().ib_oview_confBar.rows()) {
    NSFont* font =
        row.view.identifier == "RootItem" ? [NSFont boldSystemFontOfSize:0] : [NSFont systemFontOfSize:0];
    const NSSize size = [text(row.view.text)
        sizeWithAttributes:[NSDictionary dictionaryWithObject:font forKey:NSFontAttributeName]];
    NSView* sidebar = static_cast<NSView*>(session->mainView()->initialKeyView());
    EXPECT_LE(size.width, NSWidth([sidebar frame])) << row.view.text;
  }
  picture("letters-" + std::to_string(points()));
}

TEST_F(Letters, OfAnySizeDoNotOverlap) {
  openEverything();
  for (NSInteger i = 0; i < [pages() numberOfTabViewItems]; ++i) {
    NSScrollView* sheet = (NSScrollView*)[[pages() tabViewItemAtIndex:i] view];
    NSArray* views = [[sheet documentView] subviews];
    for (NSUInteger a = 0; a < [views count]; ++a) {
      for (NSUInteger b = a + 1; b < [views count]; ++b) {
        NSControl* one = [views objectAtIndex:a];
        NSControl* other = [views objectAtIndex:b];
        if ([one isHidden] || [other isHidden]) continue;
        const NSRect both =
            NSIntersectionRect(NSInsetRect([one frame], 2, 2), NSInsetRect([other frame], 2, 2));
        EXPECT_TRUE(NSIsEmptyRect(both))
            << i << ": \"" << nameOf(one) << "\" and \"" << nameOf(other) << "\"";
      }
    }
  }
}

TEST_F(Layout, TheContentsFollowTheWidthOfTheHost) {
  openEverything();
  NSView* apply = viewOf("ib_button_Apply");
  NSView* lock = viewOf("ib_button_Auth");
  const NSRect before = [apply frame], lockBefore = [lock frame];
  const CGFloat page = NSWidth([pages() frame]);
  const CGFloat address = NSWidth([viewOf("ib_admin_label_nvkAddress") frame]);
  const CGFloat message = NSWidth([static_cast<NSView*>(messages().view()) frame]);
  NSSize size = [content() frame].size;
  size.width += 80;
  [content() setFrameSize:size];
  EXPECT_EQ(NSMinX([apply frame]), NSMinX(before) + 80);
  EXPECT_EQ(NSWidth([apply frame]), NSWidth(before));
  EXPECT_EQ(NSMinX([lock frame]), NSMinX(lockBefore));
  EXPECT_EQ(NSWidth([pages() frame]), page + 80);
  choosePage("Norvik clients");
  EXPECT_EQ(NSWidth([viewOf("ib_admin_label_nvkAddress") frame]), address + 80);
  EXPECT_EQ(NSWidth([static_cast<NSView*>(messages().view()) frame]), message + 80);
}

// The frames of what lies in the main view itself.
TEST_F(Layout, NothingOverlapsInAHostOfAnySize) {
  open();
  const CGFloat natural = NSHeight([content() frame]);
  for (const NSSize& size : {NSMakeSize(668, 420), NSMakeSize(568, natural), NSMakeSize(900, 700)}) {
    for (const bool withMessage : {false, true}) {
      SCOPED_TRACE(std::to_string(size.width) + (withMessage ? " with a message" : ""));
      [content() setFrameSize:size];
      messages().show(MessageSubject::outcome,
                      withMessage ? WindowMessage{MessageKind::note, "A message.", {}, ""} : WindowMessage());
      NSArray* views = [content() subviews];
      for (NSUInteger a = 0; a < [views count]; ++a) {
        NSView* one = [views objectAtIndex:a];
        if ([one isHidden]) continue;
        EXPECT_TRUE(NSContainsRect([content() bounds], [one frame])) << utf8([one description]);
        for (NSUInteger b = a + 1; b < [views count]; ++b) {
          NSView* other = [views objectAtIndex:b];
          if ([other isHidden]) continue;
          EXPECT_FALSE(NSIntersectsRect([one frame], [other frame]))
              << utf8([one description]) << " and " << utf8([other description]);
        }
      }
      EXPECT_GT(NSHeight([pages() frame]), 200);
      NSView* page = [viewOf("ib_user_chkbox_mseSwap") superview];
      EXPECT_EQ(NSMinY([page convertRect:[page bounds] toView:[page superview]]), 0) << "begins at the top";
    }
  }
}

TEST_F(Layout, APageScrollsWhereTheHostIsTooLowForIt) {
  openEverything();
  choosePage("Norvik clients");
  NSView* last = viewOf("ib_admin_chkbox_nvkPrint");
  const auto isSeen = [last] { return NSContainsRect([last visibleRect], [last bounds]); };
  EXPECT_TRUE(isSeen());
  [content() setFrameSize:NSMakeSize(668, 300)];
  EXPECT_FALSE(isSeen());
  session->mainView()->showHit({pageName(interface.tabs[3]), "nvk.printing", "", "ib_admin_chkbox_nvkPrint"});
  EXPECT_TRUE(isSeen());
}

TEST_F(Layout, TheDotsOfALongWaitHaveTheirPlace) {
  openEverything();
  NSTextField* state = (NSTextField*)viewOf("ib_admin_label_svrState");
  NSString* longest = [@"Starting" stringByPaddingToLength:33 withString:@"." startingAtIndex:0];
  EXPECT_EQ([linesOf(longest, [state font], NSWidth([state frame])) count], 1u);
  const NSSize size = [longest sizeWithAttributes:[NSDictionary dictionaryWithObject:[state font]
                                                                              forKey:NSFontAttributeName]];
  EXPECT_LT(size.width, NSWidth([state frame]));
}

TEST_F(Layout, TheColourBeforeTheStateFollowsTheWait) {
  open();
  press("ib_button_Auth");
  choosePage("Server");
  computer.service.setStartDelay(3);
  NVKDot* dot = (NVKDot*)find([viewOf("ib_admin_label_svrState") superview],
                              [](NSView* one) { return [one isKindOfClass:[NVKDot class]]; });
  const auto red = [dot] {
    return [[[dot color] colorUsingColorSpaceName:NSCalibratedRGBColorSpace] redComponent];
  };
  const CGFloat stopped = red();
  int waits = 0;
  processes.waits = [&] {
    if (!pane().isServerChanging()) return;
    ++waits;
    EXPECT_NEAR(red(), stateColor(pane()).red, 0.01);
    EXPECT_NE(red(), stopped);
  };
  [(NSButton*)viewOf("ib_admin_button_svrStart") performClick:nil];
  processes.waits = nullptr;
  EXPECT_GT(waits, 0);
}

TEST_F(Layout, WordsBesideADisabledSliderLookDisabled) {
  open();
  NSTextField* caption = words("ib_user_slider_imgDept", "Colour depth");
  ASSERT_NE(caption, (NSTextField*)nil);
  NSControl* slider = (NSControl*)viewOf("ib_user_slider_imgDept");
  if (![slider isEnabled]) press("ib_user_chkbox_imgDefs");
  ASSERT_TRUE([slider isEnabled]);
  EXPECT_TRUE([[caption textColor] isEqual:[NSColor controlTextColor]]);
  press("ib_user_chkbox_imgDefs");
  ASSERT_FALSE([slider isEnabled]);
  EXPECT_TRUE([[caption textColor] isEqual:[NSColor disabledControlTextColor]]);
}

// How many pixels as dark as words each column of a part of a view has, from the first that has some.
std::vector<NSInteger> darkColumns(NSView* view, NSRect part) {
  [view lockFocus];
  NSBitmapImageRep* drawn = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:part] autorelease];
  [view unlockFocus];
  std::vector<NSInteger> columns;
  for (NSInteger x = 0; x < [drawn pixelsWide]; ++x) {
    NSInteger dark = 0;
    for (NSInteger y = 0; y < [drawn pixelsHigh]; ++y) {
      NSColor* color = [[drawn colorAtX:x y:y] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
      dark += [color redComponent] < 0.55 ? 1 : 0;
    }
    if (dark > 0 || !columns.empty()) columns.push_back(dark);
  }
  return columns;
}

// Before the words of a page there is a drawing, and between the two more space than between letters.
TEST_F(Layout, EachPageHasItsIconInTheSidebar) {
  open();
  [window display];
  auto* list = static_cast<NSOutlineView*>(session->mainView()->initialKeyView());
  ASSERT_EQ([list numberOfRows], 11);
  for (NSInteger row = 0; row < [list numberOfRows]; ++row) {
    if ([list levelForRow:row] == 0) continue;  // a heading
    const auto columns = darkColumns(list, NSInsetRect([list rectOfRow:row], 2, 2));
    const std::vector<NSInteger> space(4, 0);
    const auto gap = std::search(columns.begin(), columns.end(), space.begin(), space.end());
    EXPECT_LE(gap - columns.begin(), std::round(lineHeight()) + 1) << "row " << row;
    EXPECT_GE(std::accumulate(columns.begin(), gap, NSInteger{0}), 20) << "row " << row;
    EXPECT_TRUE(std::any_of(gap, columns.end(), [](NSInteger dark) { return dark > 0; })) << "row " << row;
  }
}

TEST_F(Layout, ThePreviewFollowsThePendingValues) {
  open();
  NSView* preview = find([[pages() tabViewItemAtIndex:6] view],
                         [](NSView* one) { return [one isKindOfClass:[NVKPreviewView class]]; });
  ASSERT_NE(preview, nil) << "there is room for it on the server's page";
  EXPECT_NE(utf8([preview toolTip]).find("6 of 8, thousands of colours"), std::string::npos);
  pane().ib_admin_slider_imgDept.setDoubleValue(4);
  EXPECT_NE(utf8([preview toolTip]).find("4 of 8, fewest colours"), std::string::npos)
      << utf8([preview toolTip]);
  EXPECT_FALSE([preview acceptsFirstResponder]);
}

TEST_F(Layout, ADisabledSliderIsPaler) {
  open();
  NSControl* slider = (NSControl*)viewOf("ib_user_slider_imgDept");
  if (![slider isEnabled]) press("ib_user_chkbox_imgDefs");
  const auto look = [&] {
    [window display];
    [slider lockFocus];
    NSBitmapImageRep* drawn =
        [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[slider bounds]] autorelease];
    const NSInteger middle = [drawn pixelsHigh] / 2;
    [slider unlockFocus];
    CGFloat darkest = 1, lightest = 0;
    for (NSInteger x = 0; x < [drawn pixelsWide]; ++x) {
      NSColor* color = [[drawn colorAtX:x y:middle] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
      darkest = std::min(darkest, [color redComponent]);
      lightest = std::max(lightest, [color redComponent]);
    }
    return std::pair(darkest, lightest);
  };
  const auto enabled = look();
  press("ib_user_chkbox_imgDefs");
  const auto disabled = look();
  EXPECT_GT(disabled.first, enabled.first + 0.2);
  EXPECT_GT(disabled.second - disabled.first, 0.05) << "it can still be seen";
}

TEST_F(Layout, WhatFollowsTheAddressMovesUpWhileThereIsNone) {
  openEverything();
  choosePage("Norvik clients");
  run(0.4);
  NSView* label = viewOf("ib_admin_label_nvkAddress");
  NSView* port = viewOf("ib_admin_chkbox_nvkPort");
  NSView* page = [label superview];
  NSButton* copy = buttonIn(page, @"Copy address");
  ASSERT_FALSE([copy isHidden]);
  EXPECT_GE(NSMinY([copy frame]), NSMaxY([label frame]));
  const CGFloat running = NSMinY([port frame]);
  EXPECT_LT(running - NSMaxY([copy frame]), 4 * lineHeight());
  computer.service.setDaemon(std::nullopt);
  run(0.4);
  ASSERT_TRUE([copy isHidden]);
  EXPECT_LT(NSMinY([port frame]), running - lineHeight());
  EXPECT_LT(NSMinY([port frame]) - NSMaxY([label frame]), 4 * lineHeight());
  computer.service.setDaemon(77);
  run(0.4);
  EXPECT_EQ(NSMinY([port frame]), running);
}

TEST_F(Layout, PushButtonsBeginWhereTheColumnBegins) {
  open();
  EXPECT_EQ(NSMinX([viewOf("ib_admin_button_svrStart") frame]) + kRoundedInset,
            NSMinX([words("ib_admin_button_svrStart", "Tools") frame]));
}

}  // namespace
}  // namespace norvik::prefpane
