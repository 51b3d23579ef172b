// The bundle as its host loads it, and the object that the host makes of it: twice, as a host may.
#include <gtest/gtest.h>

#include <map>
#include <string>

#import <Foundation/NSDebug.h>
#import <objc/runtime.h>
#include "resources/resources.h"
#include "src/adapters/property_lists/codec.h"

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/text.h"
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/panel_answer.h"

namespace norvik::prefpane {
namespace {

NSInteger rowsOf(NSPreferencePane* pane) {
  return [sidebarOf(pane) numberOfRows];
}

// Whether a row of the visible page is marked as changed.
bool isMarked(NSPreferencePane* pane) {
  return find([pane mainView], [](NSView* view) {
           return [view isKindOfClass:[NSTextField class]] &&
                  [[(NSTextField*)view stringValue] isEqualToString:@"\u2022"] && ![view isHidden];
         }) != nil;
}

NSString* const kDefaults = @"Use the server's image settings";

TEST(PaneBundle, HasTheKeysThatAHostNeeds) {
  NSDictionary* info = [[NSBundle bundleWithPath:@NORVIK_BUNDLE] infoDictionary];
  for (NSString* key : {@"NSExecutable", @"NSPrincipalClass", @"NSPrefPaneIconFile", @"NSPrefPaneIconLabel",
                        @"CFBundleIdentifier"}) {
    EXPECT_TRUE([[info objectForKey:key] length] > 0) << [key UTF8String];
  }
}

TEST(PaneBundle, SaysTheSameAsTheBuiltInInfoDictionary) {
  NSDictionary* info = [[NSBundle bundleWithPath:@NORVIK_BUNDLE] infoDictionary];
  const auto builtIn = decodePropertyList(infoPropertyList());
  ASSERT_TRUE(builtIn);
  for (const char* key : {"CFBundleIdentifier", "CFBundleName", "CFBundleShortVersionString",
                          "NSPrincipalClass", "NSPrefPaneIconFile", "NSPrefPaneIconLabel"}) {
    const auto* words = builtIn->find(key)->as<std::string>();
    EXPECT_EQ(utf8([info objectForKey:[NSString stringWithUTF8String:key]]), *words) << key;
  }
}

TEST(PaneObject, ShowsItsPagesAndLetsTheHostGo) {
  NSPreferencePane* pane = newPane();
  ASSERT_NE(pane, (id)nil);
  EXPECT_TRUE([pane isKindOfClass:[NSPreferencePane class]]);
  ASSERT_NE([pane loadMainView], (id)nil);
  EXPECT_EQ(rowsOf(pane), 11) << "two headings, two pages of the user's, seven of the administrator's";
  for (int i = 0; i < 2; ++i) EXPECT_EQ([pane shouldUnselect], NSUnselectNow);
  [pane release];
}

// A host asks for the view each time that it shows the pane.
TEST(PaneObject, MakesItsViewOnce) {
  NSPreferencePane* pane = newPane();
  NSView* view = [pane loadMainView];
  GSDebugAllocationActive(YES);
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  const int fields = GSDebugAllocationCount([NSTextField class]);
  for (int i = 0; i < 3; ++i) EXPECT_EQ([pane loadMainView], view);
  EXPECT_EQ([pane mainView], view);
  [pool release];
  EXPECT_EQ(GSDebugAllocationCount([NSTextField class]), fields);
  GSDebugAllocationActive(NO);
  [pane release];
}

// How many objects there are of each class.
std::map<std::string, int> objects() {
  std::map<std::string, int> counts;
  Class* const all = GSDebugAllocationClassList();
  for (Class* one = all; *one != Nil; ++one) counts[class_getName(*one)] = GSDebugAllocationCount(*one);
  NSZoneFree(NSDefaultMallocZone(), all);
  return counts;
}

// Shows the pane and leaves it, as often as that.
void showAndLeave(NSPreferencePane* pane, NSWindow* window, int times) {
  for (int i = 0; i < times; ++i) {
    NSAutoreleasePool* pool = [NSAutoreleasePool new];
    NSView* view = [pane loadMainView];
    [pane willSelect];
    [[window contentView] addSubview:view];
    [pane didSelect];
    [window display];
    [pane willUnselect];
    [view removeFromSuperview];
    [pane didUnselect];
    [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantPast]];
    [pool release];
  }
}

TEST(PaneObject, ShowingItAgainLeavesNothingBehind) {
  NSPreferencePane* pane = newPane();
  NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 600, 560)
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
  [window orderFront:nil];
  GSDebugAllocationActive(YES);
  showAndLeave(pane, window, 5);
  const auto before = objects();
  showAndLeave(pane, window, 50);
  for (const auto& [name, count] : objects()) {
    const auto known = before.find(name);
    EXPECT_LT(count - (known != before.end() ? known->second : 0), 10) << name;
  }
  GSDebugAllocationActive(NO);
  [window release];
  [pane release];
}

TEST(PaneObject, MarksWhatDiffersOnTheVisiblePage) {
  NSPreferencePane* pane = newPane();
  [pane loadMainView];
  EXPECT_FALSE(isMarked(pane));
  [button(pane, kDefaults) performClick:nil];
  EXPECT_TRUE(isMarked(pane));
  choose(pane, 2);
  EXPECT_FALSE(isMarked(pane));
  choose(pane, 1);
  EXPECT_TRUE(isMarked(pane));
  choose(pane, 2);
  NVKPanelAnswer* answer = [NVKPanelAnswer with:@"Discard Changes"];
  [pane didUnselect];
  [answer stop];
  choose(pane, 1);
  EXPECT_FALSE(isMarked(pane)) << "it changed while it was not visible";
  [pane release];
}

TEST(PaneObject, OffersNoCopyWithoutAnAddress) {
  NSPreferencePane* pane = newPane();
  [pane loadMainView];
  int buttons = 0;
  for (NSInteger i = 0; i < [pagesOf(pane) numberOfTabViewItems]; ++i) {
    NSButton* copy = buttonIn([[pagesOf(pane) tabViewItemAtIndex:i] view], @"Copy address");
    if (copy == nil) continue;
    ++buttons;
    EXPECT_TRUE([copy isHidden]);
  }
  EXPECT_EQ(buttons, 2) << "on the page of each service";
  [pane release];
}

TEST(PaneObject, ASecondOneStaysInertAndPassesTheHostsCallsOn) {
  NSPreferencePane* first = newPane();
  [first loadMainView];
  NSPreferencePane* second = newPane();
  [second loadMainView];
  EXPECT_EQ(rowsOf(first), 11);
  EXPECT_EQ(rowsOf(second), 0);
  [second willSelect];
  [second didSelect];
  [second willUnselect];
  [button(first, kDefaults) performClick:nil];
  EXPECT_TRUE(isMarked(first));
  NVKPanelAnswer* answer = [NVKPanelAnswer with:@"Discard Changes"];
  [second didUnselect];
  [answer stop];
  EXPECT_TRUE([[answer words] containsObject:@"Norvik Server options changed"]);
  [second release];
  EXPECT_EQ(rowsOf(first), 11);
  [first release];
  NSPreferencePane* next = newPane();
  [next loadMainView];
  EXPECT_EQ(rowsOf(next), 11) << "with the first one gone, the next one lives";
  [next release];
}

}  // namespace
}  // namespace norvik::prefpane
