// The lock button pixel by pixel: the module's own image over the toolkit's plain button with a white face,
// and which way up it is.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>

#include "resources/resources.h"
#import "src/frontends/prefpane/lock_button_classes.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/server/mac/ui/nvk_button.h"
#include "tests/support/pixels.h"

#import <objc/runtime.h>

namespace norvik::prefpane {
namespace {

// The picture is drawn in its own size and, within the margins, begins at a whole pixel: where the toolkit
// has to scale it or to round, what comes of that depends on where the button is.
constexpr NSRect kFrame = {{7, 11}, {41, 39}};
constexpr CGFloat kPictureSide = 32;
constexpr CGFloat kWindowSide = 120;
constexpr Color kTint{0.75, 0.7, 0.6, 1};

id white(id /*class*/, SEL /*selector*/) {
  return [NSColor whiteColor];
}

// Buttons of the toolkit have a white face as long as this lives.
class WhiteFaces {
 public:
  WhiteFaces() = default;
  ~WhiteFaces() { method_setImplementation(face_, usual_); }
  WhiteFaces(const WhiteFaces&) = delete;
  WhiteFaces& operator=(const WhiteFaces&) = delete;

 private:
  Method face_ = class_getClassMethod([NSColor class], @selector(controlBackgroundColor));
  IMP usual_ = method_setImplementation(face_, reinterpret_cast<IMP>(white));
};

NSImage* lockPicture() {
  const std::string bytes = std::string(resourceFile("authlock", "tiff").value());
  NSImage* picture = [[[NSImage alloc] initWithData:[NSData dataWithBytes:bytes.data()
                                                                   length:bytes.size()]] autorelease];
  [picture setSize:NSMakeSize(kPictureSide, kPictureSide)];
  return picture;
}

struct Look {
  const char* name;
  void (*set)(NSButton* button);
};
const Look kLooks[] = {
    {"Normal", [](NSButton*) {}},
    {"Hovered",
     [](NSButton* button) {
       [button mouseEntered:[NSEvent enterExitEventWithType:NSMouseEntered
                                                   location:NSZeroPoint
                                              modifierFlags:0
                                                  timestamp:0
                                               windowNumber:0
                                                    context:nil
                                                eventNumber:0
                                             trackingNumber:0
                                                   userData:nullptr]];
     }},
    {"Pressed", [](NSButton* button) { [[button cell] setHighlighted:YES]; }},
    {"Disabled", [](NSButton* button) { [button setEnabled:NO]; }},
};

// What a window shows of a button at kFrame, in a view that is flipped or not, with so many pixels a point.
// Row 0 is the top one.
Image shown(NSButton* button, bool flipped, int scale) {
  const NSRect whole = NSMakeRect(0, 0, kWindowSide, kWindowSide);
  NSWindow* window = [[[NSWindow alloc] initWithContentRect:whole
                                                  styleMask:NSBorderlessWindowMask
                                                    backing:NSBackingStoreBuffered
                                                      defer:NO] autorelease];
  [window setReleasedWhenClosed:NO];
  NSView* view =
      [[[flipped ? [NVKFlippedView class] : [NSView class] alloc] initWithFrame:whole] autorelease];
  [view scaleUnitSquareToSize:NSMakeSize(scale, scale)];
  [[window contentView] addSubview:view];
  [button setFrame:kFrame];
  [view addSubview:button];
  [window orderFront:nil];
  [window display];
  NSView* content = [window contentView];
  [content lockFocus];
  NSBitmapImageRep* picture =
      [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[button convertRect:[button bounds]
                                                                      toView:content]] autorelease];
  [content unlockFocus];
  [button removeFromSuperview];
  [window close];
  Image image(static_cast<int>([picture pixelsWide]), static_cast<int>([picture pixelsHigh]));
  image.setFlipped(true);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      NSUInteger parts[] = {0, 0, 0, 255};
      [picture getPixel:parts atX:x y:y];
      image.setPixel(x, y,
                     {static_cast<uint8_t>(parts[0]), static_cast<uint8_t>(parts[1]),
                      static_cast<uint8_t>(parts[2]), static_cast<uint8_t>(parts[3])});
    }
  }
  return image;
}

NSButton* made(Class buttonClass, const Look& look) {
  NSButton* button = [[[buttonClass alloc] initWithFrame:kFrame] autorelease];
  [button setTitle:@""];
  [button setImagePosition:NSImageOnly];
  [button setImage:lockPicture()];
  look.set(button);
  return button;
}

::NVKButton* tinted(const Look& look, NSColor* color) {
  ::NVKButton* button = (::NVKButton*)made([::NVKButton class], look);
  [button setButtonColor:color];
  return button;
}

NSColor* tint() {
  return [NSColor colorWithCalibratedRed:kTint.red green:kTint.green blue:kTint.blue alpha:kTint.alpha];
}

// Hands the module a button that has been drawn already.
struct DrawnButton : ButtonPainter {
  explicit DrawnButton(const Image& look) : plain(look) {}
  void drawButton(const ButtonCell& /*cell*/, Image& image) override { image = plain; }
  const Image& plain;
};

Image byTheModule(const Image& plain) {
  Image image(plain.width(), plain.height());
  image.setFlipped(true);
  NVKButtonCell cell;
  cell.setButtonColor(kTint);
  DrawnButton painter(plain);
  cell.drawWithFrame({0, 0, double(image.width()), double(image.height())}, image, painter);
  return image;
}

void expectSame(const Image& one, const Image& other) {
  ASSERT_EQ(one.width(), other.width());
  ASSERT_EQ(one.height(), other.height());
  int different = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      if (one.pixel(x, y) == other.pixel(x, y)) continue;
      if (++different > 5) continue;
      EXPECT_EQ(one.pixel(x, y), other.pixel(x, y)) << "at " << x << ", " << y;
    }
  }
  EXPECT_EQ(different, 0) << "pixels";
}

class LockPixels : public testing::TestWithParam<std::tuple<Look, bool, int>> {
 protected:
  const Look look = std::get<0>(GetParam());
  const bool flipped = std::get<1>(GetParam());
  const int scale = std::get<2>(GetParam());
};

TEST_P(LockPixels, AreThoseOfTheModule) {
  Image plain(0, 0);
  {
    const WhiteFaces faces;
    plain = shown(made([NSButton class], look), flipped, scale);
  }
  expectSame(shown(tinted(look, tint()), flipped, scale), byTheModule(plain));
}

TEST_P(LockPixels, WithTheClearColourAreThoseOfAPlainButton) {
  expectSame(shown(tinted(look, [NSColor clearColor]), flipped, scale),
             shown(made([NSButton class], look), flipped, scale));
}

INSTANTIATE_TEST_SUITE_P(Each, LockPixels,
                         testing::Combine(testing::ValuesIn(kLooks), testing::Bool(), testing::Values(1, 2)),
                         [](const testing::TestParamInfo<LockPixels::ParamType>& row) {
                           return std::string(std::get<0>(row.param).name) +
                                  (std::get<1>(row.param) ? "Flipped" : "Upright") + "Scale" +
                                  std::to_string(std::get<2>(row.param));
                         });

TEST(LockButton, DrawingLeavesTheCellToItsButton) {
  ::NVKButton* button = tinted(kLooks[0], tint());
  shown(button, true, 1);
  EXPECT_EQ([[button cell] controlView], button);
}

// The light comes from the upper left, and the shackle of the lock is above its body.
TEST(LockPixels, AreTheRightWayUpAtEveryEdge) {
  for (const bool flipped : {false, true}) {
    const Image image = shown(tinted(kLooks[0], tint()), flipped, 1);
    const int right = image.width() - 1, bottom = image.height() - 1;
    const int tintRed = premultiplied(kTint).red;
    for (int x = 2; x < right - 2; ++x) {
      EXPECT_EQ(image.pixel(x, 0).red, tintRed) << "the upper edge is light, at " << x;
      EXPECT_EQ(image.pixel(x, bottom).red, 0) << "the lower edge is black, at " << x;
    }
    for (int y = 2; y < bottom - 2; ++y) {
      EXPECT_EQ(image.pixel(0, y).red, tintRed) << "the left edge is light, at " << y;
      EXPECT_EQ(image.pixel(right, y).red, 0) << "the right edge is black, at " << y;
    }
    const auto darkened = [&](int from, int to) {
      int pixels = 0;
      for (int y = from; y < to; ++y) {
        for (int x = 4; x < right - 4; ++x) pixels += image.pixel(x, y).red < tintRed;
      }
      return pixels;
    };
    EXPECT_LT(darkened(4, image.height() / 2), darkened(image.height() / 2, bottom - 4));
  }
}

}  // namespace
}  // namespace norvik::prefpane
