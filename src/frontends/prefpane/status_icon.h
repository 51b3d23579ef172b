// How each kind of message is marked: a colour and an icon, so that the colour is not the only mark.
// For .mm files alone.
#pragma once

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/shared/interface/window_texts.h"

namespace norvik::prefpane {

// Dark enough to be read on the grey of the toolkit's windows.
NSColor* statusColor(MessageKind kind);

}  // namespace norvik::prefpane

// A disc, a triangle or an octagon with a sign in it.
@interface NVKStatusIcon : NSView {
  norvik::MessageKind kind_;
}
- (void)setKind:(norvik::MessageKind)kind;
@end
