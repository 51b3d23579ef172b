// A view without a size that is notified with all others, within the view that is followed.
#include "src/frontends/prefpane/appearance_mac.h"

#include <utility>

#import "src/frontends/prefpane/call.h"

@interface NVKAppearanceView : NSView {
  NVKCall* changed_;
}
- (id)initWithCall:(NVKCall*)changed;
@end

@implementation NVKAppearanceView

- (id)initWithCall:(NVKCall*)changed {
  if ((self = [super initWithFrame:NSMakeRect(0, 0, 0, 0)]) == nil) return nil;
  changed_ = [changed retain];
  return self;
}

- (void)dealloc {
  [changed_ release];
  [super dealloc];
}

// Systems from 10.14 call this; before there is one appearance.
- (void)viewDidChangeEffectiveAppearance {
  NSAppearance* before = [NSAppearance currentAppearance];
  [NSAppearance setCurrentAppearance:[self effectiveAppearance]];
  [changed_ call];
  [NSAppearance setCurrentAppearance:before];
}

@end

namespace norvik::prefpane {

AppearanceWatch::AppearanceWatch(void* view, std::function<void()> changed) {
  const Function call = std::move(changed);
  NVKCall* object = [[[NVKCall alloc] initWithCopyOf:&call] autorelease];
  NVKAppearanceView* follower = [[[NVKAppearanceView alloc] initWithCall:object] autorelease];
  [static_cast<NSView*>(view) addSubview:follower];
  follower_ = Handle(follower);
}

AppearanceWatch::~AppearanceWatch() {
  [static_cast<NSView*>(follower_.get()) removeFromSuperview];
}

}  // namespace norvik::prefpane
