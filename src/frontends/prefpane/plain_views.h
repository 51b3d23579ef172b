// Plain views and texts of this front end, for .mm files alone.
#pragma once

#include <cstddef>

#import "src/frontends/prefpane/appkit.h"
#include "src/server/mac/platform/geometry.h"

// Its origin is the upper left corner, so that a layout runs down the page.
@interface NVKFlippedView : NSView
@end

// Scrolls where its height is not enough; its document is always as wide as there is room.
@interface NVKPageScroll : NSScrollView
@end

// A filled circle.
@interface NVKDot : NSView {
  NSColor* color_;
}
- (NSColor*)color;
- (void)setColor:(NSColor*)color;
@end

namespace norvik::prefpane {

// How much larger than usual the person's letters are; at least 1.
CGFloat fontScale();
// The height of a line of text.
CGFloat lineHeight();
// A text that cannot be edited, on one line, in the size that it needs.
NSTextField* makeCaption(NSString* words);
// The same, broken into lines of at most that width.
NSTextField* makeParagraph(NSString* words, CGFloat width);
// The words broken at spaces into lines of at most that width; a longer word has a line of its own.
NSArray* linesOf(NSString* words, NSFont* font, CGFloat width);
// The same as one text of at most so many lines, the last one with an ellipsis where words are left out.
NSString* fitted(NSString* words, NSFont* font, CGFloat width, std::size_t lines);
// A box with a text that scrolls and cannot be edited, in letters of one width; and another text for it.
NSScrollView* makeTextBox(NSString* words, NSRect frame);
void setTextOfBox(NSScrollView* box, NSString* words);
// A push button with small letters, in the size that it needs. The target, which it does not keep, is sent
// `call:`.
NSButton* makeSmallButton(NSString* title, id target);
// A button that copies the address in a label's text; and what it does with an address.
NSButton* makeCopyButton(NSString* title, NSTextField* label);
void copyToPasteboard(NSString* words);
// A colour of the module.
NSColor* toolkitColor(const Color& color);

}  // namespace norvik::prefpane
