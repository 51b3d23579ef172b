// Keys of a slider. The toolkit's own steps are a part of the range, and rarely a whole number.
#import "src/frontends/prefpane/slider.h"

#include <algorithm>
#include <cmath>

@implementation NVKSlider

// Not every toolkit draws a disabled slider in another way.
- (void)drawRect:(NSRect)rect {
  [super drawRect:rect];
  if ([self isEnabled]) return;
  constexpr CGFloat kFaded = 0.6;
  NSColor* window = [[NSColor windowBackgroundColor] colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  [[window colorWithAlphaComponent:kFaded] set];
  NSRectFillUsingOperation([self bounds], NSCompositeSourceOver);
}

- (double)largeStep {
  const NSInteger intervals = [self numberOfTickMarks] - 1;
  return intervals < 1 ? 1
                       : std::max(1.0, std::round(([self maxValue] - [self minValue]) / (double)intervals));
}

// By how much a key moves the knob; 0 for any other key.
- (double)stepOfKey:(unichar)key {
  switch (key) {
    case NSLeftArrowFunctionKey:
    case NSDownArrowFunctionKey:
      return -1;
    case NSRightArrowFunctionKey:
    case NSUpArrowFunctionKey:
      return 1;
    case NSPageDownFunctionKey:
      return -[self largeStep];
    case NSPageUpFunctionKey:
      return [self largeStep];
    default:
      return 0;
  }
}

- (void)keyDown:(NSEvent*)event {
  NSString* keys = [event characters];
  const double step = [keys length] == 1 ? [self stepOfKey:[keys characterAtIndex:0]] : 0;
  if (step == 0) {
    [super keyDown:event];
    return;
  }
  const double moved = std::clamp([self doubleValue] + step, [self minValue], [self maxValue]);
  if (moved == [self doubleValue]) return;
  [self setDoubleValue:moved];
  [self sendAction:[self action] to:[self target]];
}

@end
