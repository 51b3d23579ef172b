// The tinted button: drawn by the toolkit, tinted by the module's own compositing, because not every backend
// of the toolkit has plus darker.
#include "src/frontends/prefpane/lock_button.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

#import "src/frontends/prefpane/lock_button_classes.h"
#include "src/frontends/prefpane/text.h"
#include "src/server/mac/ui/nvk_button.h"

#import <objc/runtime.h>

namespace norvik::prefpane {

namespace {

constexpr NSInteger kNotSubclassLine = 43;
constexpr NSInteger kNoCopyLine = 50;

void reportConversion(NSInteger line, NSString* description) {
  [[NSAssertionHandler currentHandler] handleFailureInFunction:@"id ConvertObjectIntoSubclass(id, Class)"
                                                          file:@"src/server/mac/nvk_button"
                                                    lineNumber:line
                                                   description:@"%@", description];
}

Image fromToolkit(NSBitmapImageRep* picture) {
  Image image(static_cast<int>([picture pixelsWide]), static_cast<int>([picture pixelsHigh]));
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      NSColor* color = [[picture colorAtX:x y:y] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
      image.setPixel(
          x, y,
          premultiplied(
              {[color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]}));
    }
  }
  return image;
}

// Where the plain button has the window's colour, the tint must show as it is: only what is darker shades it.
void keepShading(Image& image) {
  NSColor* plainColor = [[NSColor controlBackgroundColor] colorUsingColorSpaceName:NSDeviceRGBColorSpace];
  const CGFloat parts[] = {
      [plainColor redComponent], [plainColor greenComponent], [plainColor blueComponent]};
  const auto lightened = [](uint8_t value, CGFloat part) {
    return static_cast<uint8_t>(std::min(255.0, std::round(value / std::max(part, 1 / 255.0))));
  };
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const Pixel plain = image.pixel(x, y);
      image.setPixel(x, y,
                     {lightened(plain.red, parts[0]), lightened(plain.green, parts[1]),
                      lightened(plain.blue, parts[2]), plain.alpha});
    }
  }
}

NSImage* toToolkit(const Image& image) {
  NSBitmapImageRep* picture = [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                       pixelsWide:image.width()
                                                                       pixelsHigh:image.height()
                                                                    bitsPerSample:8
                                                                  samplesPerPixel:4
                                                                         hasAlpha:YES
                                                                         isPlanar:NO
                                                                   colorSpaceName:NSDeviceRGBColorSpace
                                                                      bytesPerRow:4 * image.width()
                                                                     bitsPerPixel:32] autorelease];
  unsigned char* bytes = [picture bitmapData];
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const Pixel pixel = image.pixel(x, y);
      for (const uint8_t part : {pixel.red, pixel.green, pixel.blue, pixel.alpha}) *bytes++ = part;
    }
  }
  NSImage* made = [[[NSImage alloc] initWithSize:NSMakeSize(image.width(), image.height())] autorelease];
  [made addRepresentation:picture];
  return made;
}

}  // namespace

}  // namespace norvik::prefpane

@interface NVKButtonCell (Plain)
- (norvik::Image)plainLookInView:(NSView*)view size:(NSSize)size;
@end

namespace norvik::prefpane {

namespace {

// The plain look, as the toolkit draws it.
class ToolkitPainter : public ButtonPainter {
 public:
  ToolkitPainter(::NVKButtonCell* cell, NSView* view) : cell_(cell), view_(view) {}
  void drawButton(const ButtonCell& /*cell*/, Image& image) override {
    image = [cell_ plainLookInView:view_ size:NSMakeSize(image.width(), image.height())];
  }

 private:
  ::NVKButtonCell* cell_;
  NSView* view_;
};

}  // namespace

}  // namespace norvik::prefpane

@implementation NVKButtonCell

- (id)copyWithZone:(NSZone*)zone {
  NVKButtonCell* copy = [super copyWithZone:zone];
  copy->buttonColor_ = [buttonColor_ copyWithZone:zone];
  return copy;
}

- (void)dealloc {
  [buttonColor_ release];
  [super dealloc];
}

- (NSColor*)buttonColor {
  return buttonColor_;
}

- (void)setButtonColor:(NSColor*)color {
  NSColor* kept = [color copy];
  [buttonColor_ release];
  buttonColor_ = kept;
}

// Without the picture, which is drawn on the tinted button: if it were tinted too, it could hardly be seen.
- (norvik::Image)plainLookInView:(NSView*)view size:(NSSize)size {
  NSImage* canvas = [[[NSImage alloc] initWithSize:size] autorelease];
  const NSRect whole = NSMakeRect(0, 0, size.width, size.height);
  [canvas lockFocus];
  [super drawBezelWithFrame:whole inView:view];
  NSBitmapImageRep* drawn = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:whole] autorelease];
  [canvas unlockFocus];
  norvik::Image image = norvik::prefpane::fromToolkit(drawn);
  norvik::prefpane::keepShading(image);
  return image;
}

- (void)drawWithFrame:(NSRect)frame inView:(NSView*)view {
  if (buttonColor_ == nil || [buttonColor_ isEqual:[NSColor clearColor]]) {
    [super drawWithFrame:frame inView:view];
    return;
  }
  NSColor* color = [buttonColor_ colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  norvik::NVKButtonCell cell;
  cell.setButtonColor(norvik::Color{
      [color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]});
  norvik::Image image(static_cast<int>(std::lround(NSWidth(frame))),
                      static_cast<int>(std::lround(NSHeight(frame))));
  norvik::prefpane::ToolkitPainter painter(self, view);
  cell.drawWithFrame({0, 0, NSWidth(frame), NSHeight(frame)}, image, painter);
  NSImage* tinted = norvik::prefpane::toToolkit(image);
  [tinted setFlipped:[view isFlipped]];
  [tinted drawInRect:frame fromRect:NSZeroRect operation:NSCompositeSourceOver fraction:1.0];
  [super drawInteriorWithFrame:frame inView:view];
}

@end

@implementation NVKButton

+ (Class)cellClass {
  return [NVKButtonCell class];
}

- (id)initWithCoder:(NSCoder*)coder {
  if ((self = [super initWithCoder:coder]) == nil) return nil;
  Class wanted = [[self class] cellClass];
  NSCell* decoded = [self cell];
  if ([decoded class] == wanted || ![wanted isSubclassOfClass:[decoded class]]) return self;
  // The copy's contents belong to the new cell, so that only its memory is freed.
  NSCell* copy = [decoded copy];
  NSCell* tinted = norvik::prefpane::ConvertObjectIntoSubclass(copy, wanted);
  if (tinted == nil) {
    [copy release];
    return self;
  }
  [self setCell:[tinted autorelease]];
  NSDeallocateObject(copy);
  return self;
}

- (NSColor*)buttonColor {
  NSCell* cell = [self cell];
  return [cell isKindOfClass:[NVKButtonCell class]] ? [(NVKButtonCell*)cell buttonColor] : nil;
}

- (void)setButtonColor:(NSColor*)color {
  NSCell* cell = [self cell];
  if ([cell isKindOfClass:[NVKButtonCell class]]) [(NVKButtonCell*)cell setButtonColor:color];
}

- (void)setImage:(NSImage*)image {
  // A picture that is already shown needs no drawing; not every toolkit's button notices that by itself.
  if (image == [self image]) return;
  [super setImage:image];
  if ([[self cell] isKindOfClass:[NVKButtonCell class]]) [self setNeedsDisplay:YES];
}

// One rectangle at most: each showing of the pane puts the button into a window again.
- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  if (isTracking_) [self removeTrackingRect:tracking_];
  isTracking_ = [self window] != nil;
  if (!isTracking_) return;
  tracking_ = [self addTrackingRect:[self visibleRect] owner:self userData:nullptr assumeInside:NO];
}

@end

namespace norvik::prefpane {

id ConvertObjectIntoSubclass(id object, Class subclass) {
  if (![subclass isSubclassOfClass:[object class]]) {
    reportConversion(kNotSubclassLine,
                     @"Invalid parameter not satisfying: [subclass isSubclassOfClass:[object class]]");
    return nil;
  }
  const std::size_t known = class_getInstanceSize([object class]);
  const std::size_t more = class_getInstanceSize(subclass) - known;
  id copy = NSCopyObject(object, more, [object zone]);
  if (copy == nil) {
    reportConversion(kNoCopyLine, @"Failed to copy object.");
    return nil;
  }
  // Not every toolkit stops copying at the end of the object.
  std::memset(reinterpret_cast<char*>(copy) + known, 0, more);
  object_setClass(copy, subclass);
  return copy;
}

namespace {
constexpr CGFloat kSide = 34;  // the pictures are drawn for this size

// Decoded once; the toolkit keeps images by their names.
NSImage* pictureOf(const Picture& picture) {
  NSString* name = [@"com.veltrane.norvik." stringByAppendingString:text(picture.name)];
  NSImage* image = [NSImage imageNamed:name];
  if (image != nil) return image;
  NSData* bytes = [NSData dataWithBytes:picture.bytes.data() length:picture.bytes.size()];
  image = [[[NSImage alloc] initWithData:bytes] autorelease];
  [image setSize:NSMakeSize(kSide * 2 / 3, kSide * 2 / 3)];
  [image setName:name];
  return image;
}

}  // namespace

void* makeLockButton() {
  ::NVKButton* made = [[[::NVKButton alloc] initWithFrame:NSMakeRect(0, 0, kSide, kSide)] autorelease];
  [made setTitle:@""];
  [made setImagePosition:NSImageOnly];
  return made;
}

void showLockButton(void* button, const Control& model) {
  ::NVKButton* shown = static_cast<::NVKButton*>(button);
  const auto tint = static_cast<const NVKButton&>(model).buttonColor();
  if (tint) {
    [shown setButtonColor:[NSColor colorWithCalibratedRed:tint->red
                                                    green:tint->green
                                                     blue:tint->blue
                                                    alpha:tint->alpha]];
  }
  if (model.image() == nullptr) return;
  NSImage* picture = pictureOf(*model.image());
  if ([shown image] != picture) [shown setImage:picture];
}

}  // namespace norvik::prefpane
