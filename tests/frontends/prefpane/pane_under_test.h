// The pane as its host makes it from a bundle, and a look at the views in it. For .mm files alone.
#pragma once

#include <functional>

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

// A pane of the built bundle's class, made with that bundle or with another; its view is not loaded yet. The
// caller owns it.
NSPreferencePane* newPane(NSString* bundle = @NORVIK_BUNDLE);

// The first view of a tree, upper ones first, for which the condition holds; nil if there is none.
NSView* find(NSView* tree, const std::function<bool(NSView*)>& condition);
// The button with that title.
NSButton* buttonIn(NSView* tree, NSString* title);
NSButton* button(NSPreferencePane* pane, NSString* title);

NSOutlineView* sidebarOf(NSPreferencePane* pane);
NSTabView* pagesOf(NSPreferencePane* pane);
// Selects a row of the sidebar.
void choose(NSPreferencePane* pane, NSUInteger row);

}  // namespace norvik::prefpane
