// A row of the sidebar with the icon of its page before its words. For .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

// Draws the icon in the colour of the words. Untyped, as not every compiler can describe classes of C++.
@interface NVKPageCell : NSTextFieldCell {
  const void* icon_;  // a LineDrawing, borrowed; null for none
}
- (void)setIcon:(const void*)icon;
@end

namespace norvik::prefpane {

// What the icon takes of a row, with the space after it.
CGFloat pageIconWidth();

}  // namespace norvik::prefpane
