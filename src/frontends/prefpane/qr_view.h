// An address as a QR code on the screen, for a phone to scan. For .mm files alone.
#pragma once

#include <string>

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

// In the size that it needs, autoreleased; nil for a text that no code can hold, and where the computer has
// nothing that makes codes, as on the Mac.
NSView* makeQrView(const std::string& words);

}  // namespace norvik::prefpane
