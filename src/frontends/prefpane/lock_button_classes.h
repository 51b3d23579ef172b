// The toolkit's classes behind the lock button, for .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

@interface NVKButtonCell : NSButtonCell {
  NSColor* buttonColor_;
  BOOL withoutBezel_;  // while only what is on the button is drawn
}
- (NSColor*)buttonColor;
// Keeps a copy; requests no drawing.
- (void)setButtonColor:(NSColor*)color;
@end

@interface NVKButton : NSButton {
  NSTrackingRectTag tracking_;
  BOOL isTracking_;
}
- (NSColor*)buttonColor;
- (void)setButtonColor:(NSColor*)color;
@end

namespace norvik::prefpane {

// A new object of `subclass` with all the state of `object`; the caller owns it. If `subclass` does not
// derive from the object's class, or the copy cannot be made: a report to the assertion handler, and nil.
id ConvertObjectIntoSubclass(id object, Class subclass);

}  // namespace norvik::prefpane
