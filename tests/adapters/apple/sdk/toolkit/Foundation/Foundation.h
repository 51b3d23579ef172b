// The part of Foundation that the adapter uses, for compiling for the Mac without its headers. Written from
// the documentation; the pages are below developer.apple.com/documentation, each named at its class.
#pragma once

#import <MacTypes.h>
#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif

// /objectivec: BOOL, id, Class, SEL
#if __LP64__ && __aarch64__
typedef bool BOOL;
#define YES true
#define NO false
#else
typedef signed char BOOL;
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#endif
#define nil ((id)0)
#define Nil ((Class)0)
typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef double CGFloat;
typedef struct _NSZone NSZone;

// /corefoundation/cgrect, which is also NSRect
typedef struct CGPoint {
  CGFloat x;
  CGFloat y;
} NSPoint;
typedef struct CGSize {
  CGFloat width;
  CGFloat height;
} NSSize;
typedef struct CGRect {
  NSPoint origin;
  NSSize size;
} NSRect;

@class NSArray, NSData, NSDictionary, NSString, NSURL;

// /objectivec/nsobject
__attribute__((objc_root_class))
@interface NSObject {
  Class isa;
}
+ (id)alloc;
+ (Class)class;
- (id)init;
- (void)dealloc;
- (id)retain;
- (oneway void)release;
- (id)autorelease;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
+ (BOOL)instancesRespondToSelector:(SEL)aSelector;
- (void)performSelectorOnMainThread:(SEL)aSelector withObject:(id)arg waitUntilDone:(BOOL)wait;
@end

// /foundation/nsclassfromstring(_:)
FOUNDATION_EXPORT Class NSClassFromString(NSString* aClassName);

// /foundation/nsautoreleasepool
@interface NSAutoreleasePool : NSObject
@end

// /foundation/nsstring, /foundation/nsstringencoding
typedef NSUInteger NSStringEncoding;
enum { NSUTF8StringEncoding = 4, NSISOLatin1StringEncoding = 5, NSMacOSRomanStringEncoding = 30 };
@interface NSString : NSObject
- (id)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (const char*)UTF8String;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (NSString*)stringByExpandingTildeInPath;
@end

// /foundation/nsdata
@interface NSData : NSObject
- (NSUInteger)length;
- (const void*)bytes;
@end

// /foundation/nsarray
@interface NSArray : NSObject
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
@end

// /foundation/nsurl
@interface NSURL : NSObject
+ (id)URLWithString:(NSString*)URLString;
- (NSString*)path;
@end

// /foundation/bundle
@interface NSBundle : NSObject
+ (NSBundle*)bundleWithPath:(NSString*)path;
- (id)objectForInfoDictionaryKey:(NSString*)key;
@end

// /foundation/nsexception
@interface NSException : NSObject
- (NSString*)reason;
@end

// /foundation/nsassertionhandler
@interface NSAssertionHandler : NSObject
+ (NSAssertionHandler*)currentHandler;
- (void)handleFailureInFunction:(NSString*)functionName
                           file:(NSString*)fileName
                     lineNumber:(NSInteger)line
                    description:(NSString*)format, ...;
@end

// /foundation/processinfo, /foundation/operatingsystemversion
typedef struct {
  NSInteger majorVersion;
  NSInteger minorVersion;
  NSInteger patchVersion;
} NSOperatingSystemVersion;
@interface NSProcessInfo : NSObject
+ (NSProcessInfo*)processInfo;
- (NSOperatingSystemVersion)operatingSystemVersion;
@end

// /foundation/notificationcenter
@interface NSNotificationCenter : NSObject
+ (NSNotificationCenter*)defaultCenter;
- (void)addObserver:(id)observer selector:(SEL)aSelector name:(NSString*)aName object:(id)anObject;
@end

// /foundation/distributednotificationcenter
@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter*)defaultCenter;
- (void)postNotificationName:(NSString*)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)userInfo
                     options:(NSUInteger)options;
@end
