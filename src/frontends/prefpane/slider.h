// The slider of a whole number, for .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

// An arrow key moves it by one, whatever the range and the tick marks; Page Up and Page Down move it by one
// tick mark.
@interface NVKSlider : NSSlider
@end
