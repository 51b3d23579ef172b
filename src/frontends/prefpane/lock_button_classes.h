// The toolkit's classes behind the lock button, for .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

@interface NVKButtonCell : NSButtonCell {
  NSColor* buttonColor_;
}
- (NSColor*)buttonColor;
// Keeps a copy; requests no drawing.
- (void)setButtonColor:(NSColor*)color;
@end

@interface NVKButton : NSButton
- (NSColor*)buttonColor;
- (void)setButtonColor:(NSColor*)color;
@end

// A new object, of `subclass`, that carries all the state of `object`; nil, after telling the assertion
// handler, where `subclass` does not derive from the object's class or the copy cannot be made. The caller
// owns it.
id ConvertObjectIntoSubclass(id object, Class subclass);
