// What a Mac's center has beyond GNUstep's. Own work, for compiling alone, from
// https://developer.apple.com/documentation/foundation/distributednotificationcenter
#pragma once

#include_next <Foundation/NSDistributedNotificationCenter.h>

@interface NSDistributedNotificationCenter (Mac)
- (void)postNotificationName:(NSString*)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
                     options:(NSUInteger)options;
@end
