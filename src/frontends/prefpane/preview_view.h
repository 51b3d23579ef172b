// The picture of what a page's image settings do. For .mm files alone.
#pragma once

#include <string>

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/shared/preview/sample_screen.h"

// Takes no clicks and no keyboard.
@interface NVKPreviewView : NSView {
  NSBitmapImageRep* picture_;
}
@end

namespace norvik::prefpane {

// A view as high as that, in the sample's proportions.
NVKPreviewView* makePreview(double height);
// Draws the picture of these values; `name` is its tool tip, and its name to a screen reader.
void showPreview(NVKPreviewView* view, const SampleSettings& settings, const std::string& name);

}  // namespace norvik::prefpane
