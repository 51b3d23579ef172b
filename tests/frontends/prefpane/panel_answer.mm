// Looks for a panel at intervals, as a panel runs the loop in a mode of its own.
#import "tests/frontends/prefpane/panel_answer.h"

@implementation NVKPanelAnswer

+ (NVKPanelAnswer*)with:(NSString*)title {
  NVKPanelAnswer* made = [[NVKPanelAnswer new] autorelease];
  made->title_ = [title copy];
  made->words_ = [NSMutableArray new];
  made->timer_ = [NSTimer timerWithTimeInterval:0.05
                                         target:made
                                       selector:@selector(pressButton:)
                                       userInfo:nil
                                        repeats:YES];
  [[NSRunLoop currentRunLoop] addTimer:made->timer_ forMode:NSModalPanelRunLoopMode];
  return made;
}

- (void)dealloc {
  [title_ release];
  [words_ release];
  [super dealloc];
}

- (void)stop {
  [timer_ invalidate];
}

- (NSArray*)words {
  return words_;
}

- (void)visit:(NSView*)view {
  if ([view isKindOfClass:[NSButton class]] && [[(NSButton*)view title] isEqualToString:title_]) {
    [(NSButton*)view performClick:nil];
  } else if ([view isKindOfClass:[NSTextField class]]) {
    [words_ addObject:[(NSTextField*)view stringValue]];
  }
  for (NSUInteger i = 0; i < [[view subviews] count]; ++i) [self visit:[[view subviews] objectAtIndex:i]];
}

- (void)pressButton:(NSTimer*)timer {
  if ([NSApp modalWindow] == nil) return;
  [words_ removeAllObjects];
  [self visit:[[NSApp modalWindow] contentView]];
  // A panel that waits for events notices the pressed button only at the next one.
  [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0]
           atStart:NO];
}

@end
