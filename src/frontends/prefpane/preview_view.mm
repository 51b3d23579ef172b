// The computed bytes as a bitmap, twice as fine as its size for screens that are.
#import "src/frontends/prefpane/preview_view.h"

#include <cmath>
#include <cstring>

#import "src/frontends/prefpane/accessibility.h"
#include "src/frontends/prefpane/text.h"

@interface NVKPreviewView (Picture)
- (void)setPicture:(NSBitmapImageRep*)picture;
@end

@implementation NVKPreviewView

- (void)dealloc {
  [picture_ release];
  [super dealloc];
}

- (void)setPicture:(NSBitmapImageRep*)picture {
  [picture_ autorelease];
  picture_ = [picture retain];
  [self setNeedsDisplay:YES];
}

- (void)drawRect:(NSRect)rect {
  [picture_ drawInRect:[self bounds]];
}

@end

namespace norvik::prefpane {

NVKPreviewView* makePreview(double height) {
  const double width = std::floor(height * kSampleWidth / kSampleHeight);
  return [[[NVKPreviewView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease];
}

void showPreview(NVKPreviewView* view, const SampleSettings& settings, const std::string& name) {
  constexpr int kScale = 2;
  const SamplePicture sample = drawSampleScreen(settings, kScale);
  NSBitmapImageRep* picture = [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                       pixelsWide:sample.width
                                                                       pixelsHigh:sample.height
                                                                    bitsPerSample:8
                                                                  samplesPerPixel:4
                                                                         hasAlpha:YES
                                                                         isPlanar:NO
                                                                   colorSpaceName:NSDeviceRGBColorSpace
                                                                      bytesPerRow:4 * sample.width
                                                                     bitsPerPixel:32] autorelease];
  std::memcpy([picture bitmapData], sample.bytes.data(), sample.bytes.size());
  [view setPicture:picture];
  [view setToolTip:text(name)];
  setAccessibility(view, name, "", NSAccessibilityImageRole);
}

}  // namespace norvik::prefpane
