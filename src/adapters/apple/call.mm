// The object behind a function.
#import "src/adapters/apple/call.h"

#include <syslog.h>

#include <exception>
#include <functional>

@implementation NVKAdapterCall
- (id)initWithCopyOf:(const void*)function {
  if ((self = [super init]) != nil)
    function_ = new std::function<void()>(*static_cast<const std::function<void()>*>(function));
  return self;
}
- (void)dealloc {
  delete static_cast<std::function<void()>*>(function_);
  [super dealloc];
}
- (void)call {
  [[self retain] autorelease];  // the function may release what calls it
  try {
    (*static_cast<std::function<void()>*>(function_))();
  } catch (const std::exception& thrown) {
    ::syslog(LOG_ERR, "Norvik[E]: %s", thrown.what());
  }
}
- (void)call:(id)sender {
  [self call];
}
@end
