// What a screen reader says of a view, where the toolkit lets views say it. For .mm files alone.
#pragma once

#include <string>

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

// Gives a view its name, its help and its role, one of the toolkit's. A view whose toolkit has no such thing
// stays as it is. Empty texts and nil are left out.
void setAccessibility(NSView* view, const std::string& name, const std::string& help, NSString* role);

}  // namespace norvik::prefpane
