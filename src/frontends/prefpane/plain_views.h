// Plain views and texts of this front end, for .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

// Its origin is the upper left corner, so that a layout runs down the page.
@interface NVKFlippedView : NSView
@end

// A filled circle.
@interface NVKDot : NSView {
  NSColor* color_;
}
- (void)setColor:(NSColor*)color;
@end

namespace norvik::prefpane {

// A text that cannot be edited, on one line, in the size that it needs.
NSTextField* makeCaption(NSString* words);
// The same, broken into lines of at most that width.
NSTextField* makeParagraph(NSString* words, CGFloat width);
// A button that copies the address in a label's text.
NSButton* makeCopyButton(NSString* title, NSTextField* label);

}  // namespace norvik::prefpane
