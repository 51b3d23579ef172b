// Black on white in every theme, as cameras want it; each field is a square of whole pixels, so that the
// edges are sharp.
#import "src/frontends/prefpane/qr_view.h"

#import "src/frontends/prefpane/accessibility.h"
#include "src/frontends/shared/qr/qr_code.h"

// Untyped, as not every compiler can describe a class of C++.
@interface NVKQrView : NSView {
  const void* code_;  // a QrCode, owned
}
- (id)initWithCopyOf:(const void*)code frame:(NSRect)frame;
@end

@implementation NVKQrView

- (id)initWithCopyOf:(const void*)code frame:(NSRect)frame {
  if ((self = [super initWithFrame:frame]) != nil)
    code_ = new norvik::QrCode(*static_cast<const norvik::QrCode*>(code));
  return self;
}

- (void)dealloc {
  delete static_cast<const norvik::QrCode*>(code_);
  [super dealloc];
}

- (BOOL)isFlipped {
  return YES;
}

- (void)drawRect:(NSRect)rect {
  const auto& code = *static_cast<const norvik::QrCode*>(code_);
  const CGFloat field = std::floor(NSWidth([self bounds]) / (code.size() + 2 * norvik::kQrMargin));
  [[NSColor whiteColor] set];
  NSRectFill([self bounds]);
  [[NSColor blackColor] set];
  for (int row = 0; row < code.size(); ++row) {
    for (int column = 0; column < code.size(); ++column) {
      if (!code.isDark(column, row)) continue;
      NSRectFill(
          NSMakeRect((column + norvik::kQrMargin) * field, (row + norvik::kQrMargin) * field, field, field));
    }
  }
}

@end

namespace norvik::prefpane {

NSView* makeQrView(const std::string& words) {
  constexpr CGFloat kPixelsPerField = 4;
  const auto code = qrCodeOf(words);
  if (!code) return nil;
  const CGFloat side = (code->size() + 2 * kQrMargin) * kPixelsPerField;
  NSView* made = [[[NVKQrView alloc] initWithCopyOf:&*code frame:NSMakeRect(0, 0, side, side)] autorelease];
  setAccessibility(made, words, "", NSAccessibilityImageRole);
  return made;
}

}  // namespace norvik::prefpane
