// The layers' class is asked for by name, as every application with a window has it loaded.
#include "src/frontends/prefpane/flushing_drawing_mac.h"

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

namespace {

void sendLayers() {
  [NSClassFromString(@"CATransaction") performSelector:@selector(flush)];
}

}  // namespace

void FlushingDrawing::display(Control& control) {
  drawing_.display(control);
  sendLayers();
}

void FlushingDrawing::displayIfNeeded(View& view) {
  drawing_.displayIfNeeded(view);
  sendLayers();
}

}  // namespace norvik::prefpane
