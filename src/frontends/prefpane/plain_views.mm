// Plain views and texts.
#import "src/frontends/prefpane/plain_views.h"

#include <algorithm>
#include <cmath>

#include "src/frontends/prefpane/border.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/address_text.h"

@implementation NVKFlippedView
- (BOOL)isFlipped {
  return YES;
}
@end

@implementation NVKPageScroll
- (id)initWithFrame:(NSRect)frame {
  if ((self = [super initWithFrame:frame]) == nil) return nil;
  [self setHasVerticalScroller:YES];
  [self setAutohidesScrollers:YES];
  [self setDrawsBackground:NO];
  [[self contentView] setAutoresizesSubviews:NO];
  return self;
}
// The toolkit shows and hides the scroller here.
- (void)tile {
  [super tile];
  NSView* page = [self documentView];
  const CGFloat width = [self contentSize].width;
  if (page != nil && NSWidth([page frame]) != width)
    [page setFrameSize:NSMakeSize(width, NSHeight([page frame]))];
}
@end

@implementation NVKDot
- (void)dealloc {
  [color_ release];
  [super dealloc];
}
- (NSColor*)color {
  return color_;
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
  NSString* words = [self stringValue];
  norvik::prefpane::atBorder("NVKCopyAddress:", [words] {
    const auto address = norvik::addressIn(norvik::prefpane::utf8(words));
    if (address) norvik::prefpane::copyToPasteboard(norvik::prefpane::text(*address));
  });
}
@end

namespace norvik::prefpane {

CGFloat fontScale() {
  constexpr CGFloat kUsual = 12;  // points
  return std::max<CGFloat>(1, [[NSFont systemFontOfSize:0] pointSize] / kUsual);
}

CGFloat lineHeight() {
  return NSHeight([makeCaption(@"Ag") frame]);
}

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

namespace {

CGFloat widthOf(NSString* words, NSFont* font) {
  return [words sizeWithAttributes:[NSDictionary dictionaryWithObject:font forKey:NSFontAttributeName]].width;
}

constexpr CGFloat kCellInset = 6;  // what a text field leaves free at its two sides

void addLines(NSString* paragraph, NSFont* font, CGFloat width, NSMutableArray* lines) {
  NSString* line = @"";
  NSArray* words = [paragraph componentsSeparatedByString:@" "];
  for (NSUInteger i = 0; i < [words count]; ++i) {
    NSString* word = [words objectAtIndex:i];
    NSString* longer = [line length] == 0 ? word : [NSString stringWithFormat:@"%@ %@", line, word];
    if ([line length] > 0 && widthOf(longer, font) > width - kCellInset) {
      [lines addObject:line];
      longer = word;
    }
    line = longer;
  }
  [lines addObject:line];
}

}  // namespace

NSArray* linesOf(NSString* words, NSFont* font, CGFloat width) {
  NSMutableArray* lines = [NSMutableArray array];
  NSArray* paragraphs = [words componentsSeparatedByString:@"\n"];
  for (NSUInteger i = 0; i < [paragraphs count]; ++i)
    addLines([paragraphs objectAtIndex:i], font, width, lines);
  return lines;
}

NSString* fitted(NSString* words, NSFont* font, CGFloat width, std::size_t lines) {
  NSArray* all = linesOf(words, font, width);
  if ([all count] <= lines) return [all componentsJoinedByString:@"\n"];
  NSMutableArray* shown = [[[all subarrayWithRange:NSMakeRange(0, lines)] mutableCopy] autorelease];
  NSString* last = [[shown lastObject] stringByAppendingString:@"\u2026"];
  while (widthOf(last, font) > width - kCellInset && [last length] > 1) {
    last = [[last substringToIndex:[last length] - 2] stringByAppendingString:@"\u2026"];
  }
  [shown replaceObjectAtIndex:lines - 1 withObject:last];
  return [shown componentsJoinedByString:@"\n"];
}

NSScrollView* makeTextBox(NSString* words, NSRect frame) {
  constexpr CGFloat kLetters = 11;  // points
  NSScrollView* box = [[[NSScrollView alloc] initWithFrame:frame] autorelease];
  [box setBorderType:NSBezelBorder];
  [box setHasVerticalScroller:YES];
  [box setAutohidesScrollers:YES];
  NSTextView* view =
      [[[NSTextView alloc] initWithFrame:NSMakeRect(0, 0, [box contentSize].width, 0)] autorelease];
  [view setMinSize:[box contentSize]];
  [view setMaxSize:NSMakeSize([box contentSize].width, 1e7)];
  [view setVerticallyResizable:YES];
  [view setHorizontallyResizable:NO];
  [view setEditable:NO];
  [view setFont:[NSFont userFixedPitchFontOfSize:kLetters]];
  [box setDocumentView:view];
  setTextOfBox(box, words);
  return box;
}

void setTextOfBox(NSScrollView* box, NSString* words) {
  [(NSTextView*)[box documentView] setString:words];
}

NSButton* makeSmallButton(NSString* title, id target) {
  constexpr CGFloat kSmall = 11;  // points
  NSButton* made = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
  [made setTitle:title];
  [made setFont:[NSFont systemFontOfSize:std::round(kSmall * fontScale())]];
  [made setBezelStyle:NSRoundedBezelStyle];
  [made sizeToFit];
  [made setTarget:target];
  [made setAction:@selector(call:)];
  return made;
}

void copyToPasteboard(NSString* words) {
  NSPasteboard* board = [NSPasteboard generalPasteboard];
  [board declareTypes:[NSArray arrayWithObject:NSStringPboardType] owner:nil];
  [board setString:words forType:NSStringPboardType];
}

NSColor* toolkitColor(const Color& color) {
  return [NSColor colorWithCalibratedRed:color.red green:color.green blue:color.blue alpha:color.alpha];
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
