// The part of AppKit that the adapter uses, for compiling for the Mac without its headers. Written from the
// documentation; the pages are below developer.apple.com/documentation/appkit, each named at its class.
#pragma once

#import <Foundation/Foundation.h>

// /nsview
@interface NSView : NSObject
- (void)display;
- (void)displayIfNeeded;
@end

// /nswindow
@interface NSWindow : NSObject
- (NSRect)frame;
@end

// /nsapplication, /nsapp
@interface NSApplication : NSObject
- (NSWindow*)mainWindow;
@end
FOUNDATION_EXPORT NSApplication* NSApp;
FOUNDATION_EXPORT NSString* const NSApplicationDidBecomeActiveNotification;

// /nscolorspace
@interface NSColorSpace : NSObject
+ (NSColorSpace*)genericRGBColorSpace;
@end

// /nscolor
@interface NSColor : NSObject
+ (NSColor*)windowBackgroundColor;
- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space;
- (CGFloat)redComponent;
- (CGFloat)greenComponent;
- (CGFloat)blueComponent;
- (CGFloat)alphaComponent;
@end

// /nsalert
@interface NSAlert : NSObject
- (void)setMessageText:(NSString*)messageText;
- (void)setInformativeText:(NSString*)informativeText;
- (id)addButtonWithTitle:(NSString*)title;
- (NSInteger)runModal;
@end

// /nsrunningapplication
@interface NSRunningApplication : NSObject
- (pid_t)processIdentifier;
- (NSString*)bundleIdentifier;
- (NSURL*)bundleURL;
@end

// /nsworkspace
@interface NSWorkspace : NSObject
+ (NSWorkspace*)sharedWorkspace;
- (NSArray*)runningApplications;
- (BOOL)openURL:(NSURL*)url;
@end
