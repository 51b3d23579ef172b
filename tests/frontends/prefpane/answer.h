// Whoever answers alert panels while a test waits behind one. For .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

@interface NVKAnswer : NSObject {
  NSString* title_;
  NSMutableArray* words_;
  NSTimer* timer_;  // holds this until it is stopped
}
// From now on presses that button of each alert panel.
+ (NVKAnswer*)with:(NSString*)title;
- (void)stop;
// What the last panel said, each text by itself; none before the first.
- (NSArray*)words;
@end
