// Searches the tree of views, as the tests know the pane's views by what they show.
#import "tests/frontends/prefpane/pane_under_test.h"

namespace norvik::prefpane {

NSPreferencePane* newPane(NSString* bundle) {
  Class pane = [[NSBundle bundleWithPath:@NORVIK_BUNDLE] principalClass];
  return [[pane alloc] initWithBundle:[NSBundle bundleWithPath:bundle]];
}

NSView* find(NSView* tree, const std::function<bool(NSView*)>& condition) {
  if (condition(tree)) return tree;
  for (NSUInteger i = 0; i < [[tree subviews] count]; ++i) {
    if (NSView* found = find([[tree subviews] objectAtIndex:i], condition)) return found;
  }
  return nil;
}

NSButton* buttonIn(NSView* tree, NSString* title) {
  return (NSButton*)find(tree, [title](NSView* view) {
    return [view isKindOfClass:[NSButton class]] && [[(NSButton*)view title] isEqualToString:title];
  });
}

NSButton* button(NSPreferencePane* pane, NSString* title) {
  return buttonIn([pane mainView], title);
}

NSOutlineView* sidebarOf(NSPreferencePane* pane) {
  return (NSOutlineView*)find([pane mainView],
                              [](NSView* view) { return [view isKindOfClass:[NSOutlineView class]]; });
}

NSTabView* pagesOf(NSPreferencePane* pane) {
  return (NSTabView*)find([pane mainView],
                          [](NSView* view) { return [view isKindOfClass:[NSTabView class]]; });
}

void choose(NSPreferencePane* pane, NSUInteger row) {
  [sidebarOf(pane) selectRowIndexes:[NSIndexSet indexSetWithIndex:row] byExtendingSelection:NO];
}

}  // namespace norvik::prefpane
