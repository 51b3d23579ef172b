// Looks for a panel again and again, as a panel runs the loop in a mode of its own.
#import "tests/frontends/prefpane/answer.h"

@implementation NVKAnswer

+ (NVKAnswer*)with:(NSString*)title {
  NVKAnswer* made = [[NVKAnswer new] autorelease];
  made->title_ = [title copy];
  made->words_ = [NSMutableArray new];
  made->timer_ = [NSTimer timerWithTimeInterval:0.05
                                         target:made
                                       selector:@selector(answer:)
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

- (void)answer:(NSTimer*)timer {
  if ([NSApp modalWindow] == nil) return;
  [words_ removeAllObjects];
  [self visit:[[NSApp modalWindow] contentView]];
  // A panel that waits for events looks at its answer when the next one comes.
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
