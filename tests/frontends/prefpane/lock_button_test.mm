// The lock button's classes: decoded from the archive of a plain button, and drawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#import "src/frontends/prefpane/lock_button_classes.h"
#include "src/frontends/prefpane/text.h"

// Keeps the reports, for which the usual one would raise an exception.
@interface NVKRecordingHandler : NSAssertionHandler {
 @public
  NSMutableArray* reports;
}
@end

// The toolkit declares that it does not return; this one does, as a person's may.
#ifdef __clang__
#pragma clang diagnostic ignored "-Winvalid-noreturn"
#endif
@implementation NVKRecordingHandler
- (void)handleFailureInFunction:(NSString*)function
                           file:(NSString*)file
                     lineNumber:(NSInteger)line
                    description:(NSString*)format, ... {
  va_list arguments;
  va_start(arguments, format);
  NSString* words = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  [reports addObject:[NSString stringWithFormat:@"%@|%@|%ld|%@", function, file, (long)line, words]];
}
@end

namespace norvik::prefpane {
namespace {

constexpr CGFloat kSide = 30;

NSButton* plainButton() {
  NSButton* button = [[[NSButton alloc] initWithFrame:NSMakeRect(3, 4, kSide, kSide)] autorelease];
  [button setTitle:@"A title"];
  [button setTag:7];
  [button setEnabled:NO];
  return button;
}

// The button that is decoded from an archive of the given one, with the class NVKButton.
NVKButton* decodedFrom(NSButton* button) {
  NSData* archive = [NSKeyedArchiver archivedDataWithRootObject:button];
  NSKeyedUnarchiver* reader = [[[NSKeyedUnarchiver alloc] initForReadingWithData:archive] autorelease];
  [reader setClass:[NVKButton class] forClassName:@"NSButton"];
  return [reader decodeObjectForKey:@"root"];
}

NSBitmapImageRep* drawn(NSCell* cell) {
  NSImage* canvas = [[[NSImage alloc] initWithSize:NSMakeSize(kSide, kSide)] autorelease];
  NSView* view = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, kSide, kSide)] autorelease];
  [canvas lockFocus];
  [cell drawWithFrame:NSMakeRect(0, 0, kSide, kSide) inView:view];
  NSBitmapImageRep* picture =
      [[[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(0, 0, kSide, kSide)] autorelease];
  [canvas unlockFocus];
  return picture;
}

std::string bytesOf(NSBitmapImageRep* picture) {
  NSData* tiff = [picture TIFFRepresentation];
  return std::string(static_cast<const char*>([tiff bytes]), [tiff length]);
}

NVKButtonCell* blankCell() {
  NVKButtonCell* cell = [[[NVKButtonCell alloc] initTextCell:@""] autorelease];
  [cell setBordered:YES];
  return cell;
}

TEST(LockButton, ADecodedPlainCellBecomesATintedOneWithAllItsState) {
  NVKButton* button = decodedFrom(plainButton());
  ASSERT_TRUE([button isKindOfClass:[NVKButton class]]);
  EXPECT_EQ([[button cell] class], [NVKButtonCell class]);
  EXPECT_EQ(utf8([button title]), "A title");
  EXPECT_EQ([button tag], 7);
  EXPECT_FALSE([button isEnabled]);
  EXPECT_EQ([button buttonColor], (id)nil);
  [button setButtonColor:[NSColor redColor]];
  EXPECT_TRUE([[button buttonColor] isEqual:[NSColor redColor]]);
}

TEST(LockButton, ADecodedTintedCellIsKept) {
  NVKButton* button = [[[NVKButton alloc] initWithFrame:NSMakeRect(0, 0, kSide, kSide)] autorelease];
  [button setTitle:@"Kept"];
  NVKButton* decoded = decodedFrom(button);
  EXPECT_EQ([[decoded cell] class], [NVKButtonCell class]);
  EXPECT_EQ(utf8([decoded title]), "Kept");
}

TEST(LockButton, AClassThatDoesNotDeriveIsRefusedAndReported) {
  NSMutableDictionary* ofThread = [[NSThread currentThread] threadDictionary];
  NVKRecordingHandler* handler = [[NVKRecordingHandler new] autorelease];
  handler->reports = [NSMutableArray array];
  [ofThread setObject:handler forKey:@"NSAssertionHandler"];
  EXPECT_EQ(ConvertObjectIntoSubclass(blankCell(), [NSTextFieldCell class]), (id)nil);
  [ofThread removeObjectForKey:@"NSAssertionHandler"];
  ASSERT_EQ([handler->reports count], 1u);
  EXPECT_EQ(utf8([handler->reports objectAtIndex:0]),
            "id ConvertObjectIntoSubclass(id, Class)|src/server/mac/nvk_button|43|"
            "Invalid parameter not satisfying: [subclass isSubclassOfClass:[object class]]");
}

TEST(LockButton, WithoutAColourAndWithTheClearOneItIsAPlainButton) {
  NSButtonCell* plain = [[[NSButtonCell alloc] initTextCell:@""] autorelease];
  [plain setBordered:YES];
  const std::string look = bytesOf(drawn(plain));
  NVKButtonCell* cell = blankCell();
  EXPECT_EQ(bytesOf(drawn(cell)), look);
  [cell setButtonColor:[NSColor clearColor]];
  EXPECT_EQ(bytesOf(drawn(cell)), look);
}

TEST(LockButton, TheColourFillsTheButtonAndItsOwnShadingDarkensTheEdges) {
  NVKButtonCell* cell = blankCell();
  [cell setButtonColor:[NSColor colorWithCalibratedRed:0 green:1 blue:0 alpha:1]];
  NSBitmapImageRep* picture = drawn(cell);
  const auto green = [picture](NSInteger x, NSInteger y) {
    return [[[picture colorAtX:x y:y] colorUsingColorSpaceName:NSDeviceRGBColorSpace] greenComponent];
  };
  const auto red = [picture](NSInteger x, NSInteger y) {
    return [[[picture colorAtX:x y:y] colorUsingColorSpaceName:NSDeviceRGBColorSpace] redComponent];
  };
  EXPECT_NEAR(green(15, 15), 1, 0.02);
  EXPECT_NEAR(red(15, 15), 0, 0.02);
  CGFloat darkest = 1;
  for (NSInteger y = 0; y < 30; ++y) darkest = std::min(darkest, green(29, y));
  EXPECT_LT(darkest, 0.7);
}

TEST(LockButton, TheCellKeepsAColourOfItsOwn) {
  NVKButtonCell* cell = blankCell();
  [cell setButtonColor:[NSColor redColor]];
  NVKButtonCell* copy = [[cell copy] autorelease];
  [cell setButtonColor:nil];
  EXPECT_EQ([cell buttonColor], (id)nil);
  EXPECT_TRUE([[copy buttonColor] isEqual:[NSColor redColor]]);
}

TEST(LockButton, OnlyAnotherPictureAsksForDrawing) {
  NVKButton* button = [[[NVKButton alloc] initWithFrame:NSMakeRect(0, 0, kSide, kSide)] autorelease];
  NSImage* picture = [[[NSImage alloc] initWithSize:NSMakeSize(8, 8)] autorelease];
  NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                 styleMask:NSBorderlessWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
  [[window contentView] addSubview:button];
  [button setNeedsDisplay:NO];
  [button setImage:picture];
  EXPECT_TRUE([button needsDisplay]);
  [button setNeedsDisplay:NO];
  [button setImage:picture];
  EXPECT_FALSE([button needsDisplay]);
  [window release];
}

}  // namespace
}  // namespace norvik::prefpane
