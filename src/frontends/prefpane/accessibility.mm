// The setters of the accessibility protocol, which not every toolkit has.
#import "src/frontends/prefpane/accessibility.h"

#include "src/frontends/prefpane/text.h"

namespace norvik::prefpane {

void setAccessibility(NSView* view, const std::string& name, const std::string& help, NSString* role) {
  const auto set = [view](NSString* setter, NSString* words) {
    const SEL selector = NSSelectorFromString(setter);
    if ([words length] > 0 && [view respondsToSelector:selector])
      [view performSelector:selector withObject:words];
  };
  set(@"setAccessibilityLabel:", text(name));
  set(@"setAccessibilityHelp:", text(help));
  set(@"setAccessibilityRole:", role);
}

}  // namespace norvik::prefpane
