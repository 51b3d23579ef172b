// The object behind a function.
#import "src/frontends/prefpane/call.h"

#include "src/frontends/prefpane/border.h"

@implementation NVKCall
- (id)initWithCopyOf:(const void*)function {
  if ((self = [super init]) != nil)
    function_ = new norvik::prefpane::Function(*static_cast<const norvik::prefpane::Function*>(function));
  return self;
}
- (void)dealloc {
  delete static_cast<norvik::prefpane::Function*>(function_);
  [super dealloc];
}
- (void)call {
  [[self retain] autorelease];  // the function may release what calls it
  norvik::prefpane::atBorder("call", *static_cast<norvik::prefpane::Function*>(function_));
}
- (void)call:(id)sender {
  [self call];
}
@end
