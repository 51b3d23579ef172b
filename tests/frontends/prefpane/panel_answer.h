// Presses a button of an alert panel while a test waits for the panel to close. For .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"

@interface NVKPanelAnswer : NSObject {
  NSString* title_;
  NSMutableArray* words_;
  NSTimer* timer_;  // holds this until it is stopped
}
// From now on presses that button of each alert panel.
+ (NVKPanelAnswer*)with:(NSString*)title;
- (void)stop;
// The texts of the last panel, one by one; none before the first panel.
- (NSArray*)words;
@end
