// The outline view's data source and delegate: its questions are the pane's to answer. For .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

// Untyped, as not every compiler can describe classes of C++.
@interface NVKSidebarSource : NSObject {
  void* pane_;                  // an NVKServerPrefs of the module, borrowed
  void* sidebar_;               // a Sidebar, borrowed
  NSMutableDictionary* items_;  // the toolkit's objects for the nodes, which it compares by identity
}
- (id)initWithPane:(void*)pane sidebar:(void*)sidebar;
- (id)outlineView:(NSOutlineView*)view child:(NSInteger)index ofItem:(id)item;
@end
