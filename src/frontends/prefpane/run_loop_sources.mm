// A timer that fires once, and a file handle's notification.
#include "src/frontends/prefpane/run_loop_sources.h"

#import "src/frontends/prefpane/call.h"

namespace norvik::prefpane {

void Delay::start(double seconds) {
  stop();
  const Function fire = [this] {
    const Handle fired = timer_;  // the call may start this anew, or destroy it
    timer_ = Handle();
    call_();
  };
  NVKCall* call = [[[NVKCall alloc] initWithCopyOf:&fire] autorelease];
  NSTimer* timer = [NSTimer timerWithTimeInterval:seconds
                                           target:call
                                         selector:@selector(call)
                                         userInfo:nil
                                          repeats:NO];
  timer_ = Handle(timer);
  [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
}

void Delay::stop() {
  [static_cast<NSTimer*>(timer_.get()) invalidate];
  timer_ = Handle();
}

DescriptorWatch::DescriptorWatch(int descriptor, std::function<void()> readable) {
  if (descriptor == -1) return;
  NSFileHandle* file = [[[NSFileHandle alloc] initWithFileDescriptor:descriptor
                                                      closeOnDealloc:NO] autorelease];
  const Function again = [=] {
    readable();
    [file waitForDataInBackgroundAndNotify];
  };
  NVKCall* observer = [[[NVKCall alloc] initWithCopyOf:&again] autorelease];
  [[NSNotificationCenter defaultCenter] addObserver:observer
                                           selector:@selector(call:)
                                               name:NSFileHandleDataAvailableNotification
                                             object:file];
  file_ = Handle(file);
  observer_ = Handle(observer);
  [file waitForDataInBackgroundAndNotify];
}

DescriptorWatch::~DescriptorWatch() {
  if (observer_.get() == nullptr) return;
  [[NSNotificationCenter defaultCenter] removeObserver:static_cast<id>(observer_.get())];
}

}  // namespace norvik::prefpane
