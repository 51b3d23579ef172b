// Views of this host, for .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

// Its origin is the upper left corner, so that a layout goes down the page.
@interface NVKFlippedView : NSView
@end

// A filled circle.
@interface NVKDot : NSView {
  NSColor* color_;
}
- (void)setColor:(NSColor*)color;
@end

// A text that nobody edits, on one line, in the size that it needs.
NSTextField* NVKCaption(NSString* words);
// The same, broken into lines of at most that width.
NSTextField* NVKParagraph(NSString* words, CGFloat width);
// A button that copies the address in what a label says.
NSButton* NVKCopyButton(NSString* title, NSTextField* label);
