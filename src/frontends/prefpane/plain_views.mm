// Plain views and texts.
#import "src/frontends/prefpane/plain_views.h"

#include <cmath>

#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/address_text.h"

@implementation NVKFlippedView
- (BOOL)isFlipped {
  return YES;
}
@end

@implementation NVKDot
- (void)dealloc {
  [color_ release];
  [super dealloc];
}
- (void)setColor:(NSColor*)color {
  if ([color_ isEqual:color]) return;
  [color_ release];
  color_ = [color retain];
  [self setNeedsDisplay:YES];
}
- (void)drawRect:(NSRect)rect {
  [color_ set];
  [[NSBezierPath bezierPathWithOvalInRect:[self bounds]] fill];
}
@end

// A label that copies the address in its text.
@interface NSTextField (NVKCopying)
- (void)NVKCopyAddress:(id)sender;
@end

@implementation NSTextField (NVKCopying)
- (void)NVKCopyAddress:(id)sender {
  const auto address = norvik::addressIn(norvik::prefpane::utf8([self stringValue]));
  if (!address) return;
  NSPasteboard* board = [NSPasteboard generalPasteboard];
  [board declareTypes:[NSArray arrayWithObject:NSStringPboardType] owner:nil];
  [board setString:norvik::prefpane::text(*address) forType:NSStringPboardType];
}
@end

namespace norvik::prefpane {

NSTextField* makeCaption(NSString* words) {
  NSTextField* made = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
  [made setEditable:NO];
  [made setSelectable:NO];
  [made setBezeled:NO];
  [made setDrawsBackground:NO];
  [made setStringValue:words];
  [made sizeToFit];
  return made;
}

NSTextField* makeParagraph(NSString* words, CGFloat width) {
  NSTextField* made = makeCaption(words);
  const NSSize line = [made frame].size;
  // Not every toolkit can compute a text's height; a line loses up to a long word's width where it breaks.
  constexpr CGFloat kBreakLoss = 0.9;
  const CGFloat lines = line.width <= width ? 1 : std::ceil(line.width / (width * kBreakLoss));
  [[made cell] setWraps:YES];
  [made setFrameSize:NSMakeSize(width, lines * line.height)];
  return made;
}

NSButton* makeCopyButton(NSString* title, NSTextField* label) {
  NSButton* made = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
  [made setBezelStyle:NSRoundedBezelStyle];
  [made setTitle:title];
  [made sizeToFit];
  [made setTarget:label];
  [made setAction:@selector(NVKCopyAddress:)];
  return made;
}

}  // namespace norvik::prefpane
