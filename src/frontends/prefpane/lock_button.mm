// The tinted button: drawn by the toolkit, tinted by the module's own compositing, because not every backend
// of the toolkit has plus darker.
#include "src/frontends/prefpane/lock_button.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <functional>

#include "src/frontends/prefpane/border.h"
#import "src/frontends/prefpane/lock_button_classes.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/server/mac/ui/nvk_button.h"

#import <objc/runtime.h>

namespace norvik::prefpane {

namespace {

constexpr NSInteger kNotSubclassLine = 43;
constexpr NSInteger kNoCopyLine = 50;

// By the method itself: one toolkit declares that it does not return, and a person's handler may.
void reportConversion(NSInteger line, NSString* description) {
  using Report = void (*)(id, SEL, NSString*, NSString*, NSInteger, NSString*, ...);
  NSAssertionHandler* handler = [NSAssertionHandler currentHandler];
  const SEL selector = @selector(handleFailureInFunction:file:lineNumber:description:);
  const auto report =
      reinterpret_cast<Report>(reinterpret_cast<void (*)()>([handler methodForSelector:selector]));
  report(handler, selector, @"id ConvertObjectIntoSubclass(id, Class)", @"src/server/mac/nvk_button", line,
         @"%@", description);
}

// The row of the image that a bitmap, whose first row is the top one, has at `y`.
int rowOf(const Image& image, int y) {
  return image.isFlipped() ? y : image.height() - 1 - y;
}

// Pixels as the toolkit has drawn them.
void readPixels(NSBitmapImageRep* drawn, Image& image) {
  const bool multiplied = ([drawn bitmapFormat] & NSAlphaNonpremultipliedBitmapFormat) == 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      NSUInteger parts[] = {0, 0, 0, 255};
      [drawn getPixel:parts atX:x y:y];
      const auto part = [&](int i) {
        return static_cast<uint8_t>(multiplied ? parts[i] : (parts[i] * parts[3] + 127) / 255);
      };
      image.setPixel(x, rowOf(image, y), {part(0), part(1), part(2), static_cast<uint8_t>(parts[3])});
    }
  }
}

// What `draw` draws of a frame at the origin, of that size in points, in the pixels of the image.
void drawInto(Image& image, NSSize points, const std::function<void(NSRect frame)>& draw) {
  if (image.width() < 1 || image.height() < 1) return;
  NSBitmapImageRep* drawn = drawnPixels(image.width(), image.height(), [&] {
    NSAffineTransform* scale = [NSAffineTransform transform];
    [scale scaleXBy:image.width() / points.width yBy:image.height() / points.height];
    [scale concat];
    draw(NSMakeRect(0, 0, points.width, points.height));
  });
  readPixels(drawn, image);
}

// A tint presumes a button with a white face: it darkens by what is darker than white.
void whiten(Image& bezel, NSColor* face) {
  NSColor* color = [face colorUsingColorSpaceName:NSDeviceRGBColorSpace];
  const Pixel grey = premultiplied(
      {[color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]});
  if (bezel.pixel(bezel.width() / 2, bezel.height() / 2) != grey) return;  // white already, as while pressed
  for (int y = 0; y < bezel.height(); ++y) {
    for (int x = 0; x < bezel.width(); ++x) {
      if (bezel.pixel(x, y) == grey) bezel.setPixel(x, y, {255, 255, 255, 255});
    }
  }
}

NSImage* toToolkit(const Image& image, NSSize points) {
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
      const Pixel pixel = image.pixel(x, rowOf(image, y));
      for (const uint8_t part : {pixel.red, pixel.green, pixel.blue, pixel.alpha}) *bytes++ = part;
    }
  }
  [picture setSize:points];
  NSImage* made = [[[NSImage alloc] initWithSize:points] autorelease];
  [made addRepresentation:picture];
  return made;
}

}  // namespace

}  // namespace norvik::prefpane

@interface NVKButtonCell (Plain)
// Draws the plain button, picture included, of that size in points.
- (void)drawPlainInto:(norvik::Image*)image size:(NSSize)size;
@end

namespace norvik::prefpane {

namespace {

// The plain look, as the toolkit draws it.
class ToolkitPainter : public ButtonPainter {
 public:
  ToolkitPainter(::NVKButtonCell* cell, NSSize size) : cell_(cell), size_(size) {}
  void drawButton(const ButtonCell& /*cell*/, Image& image) override {
    [cell_ drawPlainInto:&image size:size_];
  }

 private:
  ::NVKButtonCell* cell_;
  NSSize size_;
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

- (void)drawBezelWithFrame:(NSRect)frame inView:(NSView*)view {
  if (!withoutBezel_) [super drawBezelWithFrame:frame inView:view];
}

// In the view that has the focus while it is drawn, so that both are the same way up.
- (void)drawPlainFrame:(NSRect)frame {
  [super drawWithFrame:frame inView:[NSView focusView]];
}
- (void)drawPlainBezel:(NSRect)frame {
  [super drawBezelWithFrame:frame inView:[NSView focusView]];
}

// A grey face is made white before the picture is drawn on it, whose edges blend with it.
- (void)drawPlainInto:(norvik::Image*)image size:(NSSize)size {
  const auto drawAll = [self](NSRect frame) { [self drawPlainFrame:frame]; };
  NSColor* face = norvik::prefpane::greyFace();
  if (face == nil) {
    norvik::prefpane::drawInto(*image, size, drawAll);
    return;
  }
  norvik::prefpane::drawInto(*image, size, [self](NSRect frame) { [self drawPlainBezel:frame]; });
  norvik::prefpane::whiten(*image, face);
  norvik::Image rest(image->width(), image->height());
  rest.setFlipped(image->isFlipped());
  withoutBezel_ = YES;
  norvik::prefpane::drawInto(rest, size, drawAll);
  withoutBezel_ = NO;
  image->draw(rest, 0, 0, norvik::CompositingOperation::sourceOver, 1);
}

// The tinted button of that size, as an image for this view; nil if it cannot be made.
- (NSImage*)tintedLookOfSize:(NSSize)size inView:(NSView*)view {
  NSColor* color = [buttonColor_ colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  return norvik::prefpane::atBorder<NSImage*>("drawWithFrame:inView:", nil, [=] {
    norvik::NVKButtonCell cell;
    cell.setButtonColor(norvik::Color{
        [color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]});
    const NSSize pixels = norvik::prefpane::pixelsOf(size, view);
    norvik::Image image(static_cast<int>(std::lround(pixels.width)),
                        static_cast<int>(std::lround(pixels.height)));
    image.setFlipped([view isFlipped]);
    norvik::prefpane::ToolkitPainter painter(self, size);
    cell.drawWithFrame({0, 0, double(image.width()), double(image.height())}, image, painter);
    return norvik::prefpane::toToolkit(image, size);
  });
}

- (void)drawWithFrame:(NSRect)frame inView:(NSView*)view {
  NSImage* tinted = nil;
  if (buttonColor_ != nil && ![buttonColor_ isEqual:[NSColor clearColor]])
    tinted = [self tintedLookOfSize:frame.size inView:view];
  [self setControlView:view];  // as drawing does, which has set it to a view that is gone now
  if (tinted == nil) {
    [super drawWithFrame:frame inView:view];
    return;
  }
  [tinted drawInRect:frame
            fromRect:NSZeroRect
           operation:NSCompositeSourceOver
            fraction:1
      respectFlipped:YES
               hints:nil];
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
  id copy = NSAllocateObject(subclass, 0, [object zone]);
  if (copy == nil) {
    reportConversion(kNoCopyLine, @"Failed to copy object.");
    return nil;
  }
  // All but its class. The toolkit's own copying does not stop at the end of the object everywhere.
  std::memcpy(reinterpret_cast<char*>(copy) + sizeof(Class),
              reinterpret_cast<const char*>(object) + sizeof(Class),
              class_getInstanceSize([object class]) - sizeof(Class));
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
  if (tint) [shown setButtonColor:toolkitColor(*tint)];
  if (model.image() == nullptr) return;
  NSImage* picture = pictureOf(*model.image());
  if ([shown image] != picture) [shown setImage:picture];
}

}  // namespace norvik::prefpane
