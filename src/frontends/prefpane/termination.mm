// The toolkit's notification, and the count that the system keeps for the process.
#include "src/frontends/prefpane/termination.h"

#import "src/frontends/prefpane/appkit.h"
#import "src/frontends/prefpane/call.h"

namespace norvik::prefpane {

TerminationWatch::TerminationWatch(const std::function<void()>& ends)
    : observer_([[[NVKCall alloc] initWithCopyOf:&ends] autorelease]) {
  [[NSNotificationCenter defaultCenter] addObserver:static_cast<id>(observer_.get())
                                           selector:@selector(call:)
                                               name:NSApplicationWillTerminateNotification
                                             object:nil];
}

TerminationWatch::~TerminationWatch() {
  [[NSNotificationCenter defaultCenter] removeObserver:static_cast<id>(observer_.get())];
}

NoSuddenTermination::NoSuddenTermination() {
  [[NSProcessInfo processInfo] disableSuddenTermination];
}

NoSuddenTermination::~NoSuddenTermination() {
  [[NSProcessInfo processInfo] enableSuddenTermination];
}

}  // namespace norvik::prefpane
