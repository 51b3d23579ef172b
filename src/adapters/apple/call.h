// A C++ function as an object with a selector, where the toolkit wants one. For .mm files alone.
#pragma once

#import <Foundation/Foundation.h>

// The field and the parameter are untyped, as not every compiler can make, destroy or describe those of C++.
@interface NVKAdapterCall : NSObject {
  void* function_;  // a std::function<void()>, owned
}
- (id)initWithCopyOf:(const void*)function;
// Calls it. What it throws ends here, as it cannot pass through the toolkit, and is logged.
- (void)call;
// The same, for notifications.
- (void)call:(id)sender;
@end
