// A C++ function as an object with a selector, where the toolkit wants one. For .mm files alone.
#pragma once

#include <functional>

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {
using Function = std::function<void()>;
}

// The field and the parameter are untyped, as not every compiler can make, destroy or describe those of C++.
@interface NVKCall : NSObject {
  void* function_;  // a norvik::prefpane::Function, owned
}
- (id)initWithCopyOf:(const void*)function;
- (void)call;
// The same, for actions and notifications.
- (void)call:(id)sender;
@end
