// What GNUstep's toolkit lacks, or has in a way that a test cannot see through: the version of the system,
// the running applications, the distributed notifications, and alerts that nobody has to answer.
#import <AppKit/AppKit.h>
#import <Foundation/NSDistributedNotificationCenter.h>

#include "tests/adapters/apple/doubles/doubles.h"

using norvik::doubles::mac;

namespace {

NSString* text(const std::string& utf8) {
  return [NSString stringWithUTF8String:utf8.c_str()];
}

std::string words(NSString* text) {
  return text != nil ? [text UTF8String] : "null";
}

}  // namespace

@implementation NSProcessInfo (NVKDouble)
- (NSOperatingSystemVersion)operatingSystemVersion {
  return NSOperatingSystemVersion{14, 6, 1};
}
- (BOOL)respondsToSelector:(SEL)aSelector {
  if (sel_isEqual(aSelector, @selector(operatingSystemVersion))) return mac().hasProcessInfoVersion;
  return [super respondsToSelector:aSelector];
}
@end

@interface NVKApplicationDouble : NSObject {
  NSUInteger place_;
}
- (id)initAt:(NSUInteger)place;
@end

@implementation NVKApplicationDouble
- (id)initAt:(NSUInteger)place {
  if ((self = [super init]) != nil) place_ = place;
  return self;
}
- (pid_t)processIdentifier {
  return mac().applications[place_].pid;
}
- (NSString*)bundleIdentifier {
  return text(mac().applications[place_].identifier);
}
- (NSURL*)bundleURL {
  const std::string& folder = mac().applications[place_].folder;
  return folder.empty() ? nil : [NSURL fileURLWithPath:text(folder)];
}
@end

@interface NVKWorkspaceDouble : NSObject
@end

@implementation NVKWorkspaceDouble
// In no order.
- (NSArray*)runningApplications {
  NSMutableArray* running = [NSMutableArray array];
  for (NSUInteger i = mac().applications.size(); i > 0; --i)
    [running addObject:[[[NVKApplicationDouble alloc] initAt:i - 1] autorelease]];
  return running;
}
- (BOOL)openURL:(NSURL*)url {
  norvik::doubles::record("openURL " + words([url absoluteString]));
  mac().opened.push_back(words([url absoluteString]));
  return YES;
}
@end

@implementation NSWorkspace (NVKDouble)
+ (NSWorkspace*)sharedWorkspace {
  static const id workspace = [[NVKWorkspaceDouble alloc] init];
  return workspace;
}
@end

@interface NVKCentreDouble : NSObject
@end

@implementation NVKCentreDouble
- (void)postNotificationName:(NSString*)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
                     options:(NSUInteger)options {
  if (mac().centreRefuses) [NSException raise:NSGenericException format:@"no centre"];
  if (userInfo != nil) norvik::doubles::violate("a notification with user information");
  const std::string line = words(name) + " object=" + words(object) + " options=" + std::to_string(options);
  norvik::doubles::record("postNotificationName " + line);
  mac().posted.push_back(line);
}
@end

@implementation NSDistributedNotificationCenter (NVKDouble)
+ (id)defaultCenter {
  static const id centre = [[NVKCentreDouble alloc] init];
  return centre;
}
@end

// Answers at once where a test has said what.
@implementation NSAlert (NVKDouble)
- (NSInteger)runModal {
  std::string line = words([self messageText]) + "|" + words([self informativeText]);
  NSArray* buttons = [self buttons];
  for (NSUInteger i = 0; i < [buttons count]; ++i) line += "|" + words([[buttons objectAtIndex:i] title]);
  norvik::doubles::record("runModal " + line);
  mac().alerts.push_back(line);
  if (mac().alertAnswers.empty()) {
    norvik::doubles::violate("an alert without an answer");
    return NSAlertFirstButtonReturn;
  }
  const long answer = mac().alertAnswers.front();
  mac().alertAnswers.erase(mac().alertAnswers.begin());
  return answer;
}
@end
