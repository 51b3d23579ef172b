// The toolkit, for .mm files alone, and the one place where the two systems that have it differ. Everything
// else of this front end uses only what both have.
#pragma once

#include <cmath>
#include <functional>

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

// The face of this toolkit's buttons where it is grey; nil where it is as good as white.
inline NSColor* greyFace() {
#ifdef GNUSTEP
  return [NSColor controlBackgroundColor];
#else
  return nil;
#endif
}

// The colour of the words in a row of a table.
inline NSColor* textColorOfRow(bool isSelected) {
#ifdef GNUSTEP
  return [NSColor controlTextColor];  // a selected row is only lighter
#else
  return isSelected ? [NSColor alternateSelectedControlTextColor] : [NSColor controlTextColor];
#endif
}

// How far inside its frame a rounded push button is drawn.
inline constexpr CGFloat kRoundedInset =
#ifdef GNUSTEP
    3;
#else
    6;
#endif

// How many pixels of its screen a size in a view has.
inline NSSize pixelsOf(NSSize size, NSView* view) {
#ifdef GNUSTEP
  const NSSize turned = [view convertSize:size toView:nil];  // upside down where one of both is
  return NSMakeSize(std::abs(turned.width), std::abs(turned.height));
#else
  return [view convertSizeToBacking:size];
#endif
}

// A bitmap of so many pixels with what `draw` draws, one pixel to a point.
inline NSBitmapImageRep* drawnPixels(NSInteger wide, NSInteger high, const std::function<void()>& draw) {
#ifdef GNUSTEP
  const NSRect whole = NSMakeRect(0, 0, static_cast<CGFloat>(wide), static_cast<CGFloat>(high));
  // It cannot draw into a bitmap.
  NSImage* canvas = [[[NSImage alloc] initWithSize:whole.size] autorelease];
  [canvas lockFocus];
  [NSGraphicsContext saveGraphicsState];
  draw();
  [NSGraphicsContext restoreGraphicsState];
  NSBitmapImageRep* drawn = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:whole] autorelease];
  [canvas unlockFocus];
#else
  NSBitmapImageRep* drawn = [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                     pixelsWide:wide
                                                                     pixelsHigh:high
                                                                  bitsPerSample:8
                                                                samplesPerPixel:4
                                                                       hasAlpha:YES
                                                                       isPlanar:NO
                                                                 colorSpaceName:NSDeviceRGBColorSpace
                                                                    bytesPerRow:4 * wide
                                                                   bitsPerPixel:32] autorelease];
  [NSGraphicsContext saveGraphicsState];
  [NSGraphicsContext setCurrentContext:[NSGraphicsContext graphicsContextWithBitmapImageRep:drawn]];
  draw();
  [NSGraphicsContext restoreGraphicsState];
#endif
  return drawn;
}

}  // namespace norvik::prefpane
