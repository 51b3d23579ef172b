// The bundle as its host loads it, and the object that the host makes of it: twice, as a host may.
#include <gtest/gtest.h>

#import "hosts/prefpane/appkit.h"

namespace {

NSPreferencePane* newPane() {
  NSBundle* bundle = [NSBundle bundleWithPath:@NORVIK_BUNDLE];
  return [[[bundle principalClass] alloc] initWithBundle:bundle];
}

// The first view of a class in a tree; nil where there is none.
NSView* find(NSView* view, Class wanted) {
  if ([view isKindOfClass:wanted]) return view;
  for (NSUInteger i = 0; i < [[view subviews] count]; ++i) {
    if (NSView* found = find([[view subviews] objectAtIndex:i], wanted)) return found;
  }
  return nil;
}

NSInteger rowsOf(NSPreferencePane* pane) {
  return [(NSTableView*)find([pane mainView], [NSOutlineView class]) numberOfRows];
}

TEST(PaneBundle, SaysWhatAHostAsksOfIt) {
  NSDictionary* info = [[NSBundle bundleWithPath:@NORVIK_BUNDLE] infoDictionary];
  for (NSString* key : {@"NSExecutable", @"NSPrincipalClass", @"NSPrefPaneIconFile", @"NSPrefPaneIconLabel",
                        @"CFBundleIdentifier"}) {
    EXPECT_TRUE([[info objectForKey:key] length] > 0) << [key UTF8String];
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

TEST(PaneObject, ASecondOneStaysInertAndPassesOnWhatItIsTold) {
  NSPreferencePane* first = newPane();
  [first loadMainView];
  NSPreferencePane* second = newPane();
  [second loadMainView];
  EXPECT_EQ(rowsOf(first), 11);
  EXPECT_EQ(rowsOf(second), 0);
  [second willSelect];
  [second didSelect];
  [second willUnselect];
  [second didUnselect];
  [second release];
  EXPECT_EQ(rowsOf(first), 11);
  [first release];
  NSPreferencePane* next = newPane();
  [next loadMainView];
  EXPECT_EQ(rowsOf(next), 11) << "with the first one gone, the next one lives";
  [next release];
}

}  // namespace
