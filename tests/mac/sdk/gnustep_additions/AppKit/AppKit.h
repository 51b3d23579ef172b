// What a Mac's AppKit has beyond GNUstep's and the pane uses there. Own work, for compiling alone, from the
// pages below https://developer.apple.com/documentation/appkit that are named.
#pragma once

#include_next <AppKit/AppKit.h>

// /nstablecellview
@interface NSTableCellView : NSView
- (NSTextField*)textField;
- (void)setTextField:(NSTextField*)label;
@end

// /nsuserinterfaceitemidentification
@interface NSView (MacIdentifier)
- (void)setIdentifier:(NSString*)identifier;
@end

// /nstableview
@interface NSTableView (MacRows)
- (id)makeViewWithIdentifier:(NSString*)identifier owner:(id)owner;
@end

// /nsappearance
@interface NSAppearance (MacCurrent)
+ (void)setCurrentAppearance:(NSAppearance*)appearance;
@end

// /nsappearancecustomization
@interface NSView (MacAppearance)
- (NSAppearance*)effectiveAppearance;
@end

// /nsview
@interface NSView (MacPixels)
- (NSSize)convertSizeToBacking:(NSSize)size;
@end

// /nsgraphicscontext
@interface NSGraphicsContext (MacBitmaps)
+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmap;
@end
