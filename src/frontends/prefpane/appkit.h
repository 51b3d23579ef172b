// The toolkit, for .mm files alone, and the one place where the two systems that have it differ. Everything
// else of this front end uses only what both have.
#pragma once

#import <AppKit/AppKit.h>
#import <Foundation/NSDistributedNotificationCenter.h>
#import <PreferencePanes/PreferencePanes.h>

namespace norvik::prefpane {

// Posts a notification to the processes that listen for it; `options` are those of the platform interface.
inline void postNotification(NSString* name, NSString* object, NSUInteger options) {
  NSDistributedNotificationCenter* center = [NSDistributedNotificationCenter defaultCenter];
#ifdef GNUSTEP
  // It knows only one session; the other option, to deliver at once, is the first bit.
  [center postNotificationName:name object:object userInfo:nil deliverImmediately:(options & 1) != 0];
#else
  [center postNotificationName:name object:object userInfo:nil options:options];
#endif
}

// Whether a person has clicked on the close button of a window.
inline bool isCloseRequest(NSEvent* event) {
#ifdef GNUSTEP
  return [event type] == NSAppKitDefined && [event subtype] == GSAppKitWindowClose;
#else
  return false;  // a click like any other
#endif
}

}  // namespace norvik::prefpane
