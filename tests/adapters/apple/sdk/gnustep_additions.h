// What the adapter uses of Foundation and GNUstep's does not declare. Included before every file of the
// adapter's toolkit half where that is built on GNUstep. Written from
// developer.apple.com/documentation/foundation: processinfo/operatingsystemversion and
// distributednotificationcenter/postnotificationname(_:object:userinfo:options:).
#pragma once

#ifdef __OBJC__
#import <Foundation/Foundation.h>
#import <Foundation/NSDistributedNotificationCenter.h>

typedef struct {
  NSInteger majorVersion;
  NSInteger minorVersion;
  NSInteger patchVersion;
} NSOperatingSystemVersion;

// Not there on GNUstep unless a test adds it.
@interface NSProcessInfo (NVKOperatingSystemVersion)
- (NSOperatingSystemVersion)operatingSystemVersion;
@end

@interface NSDistributedNotificationCenter (NVKOptions)
- (void)postNotificationName:(NSString*)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
                     options:(NSUInteger)options;
@end
#endif
