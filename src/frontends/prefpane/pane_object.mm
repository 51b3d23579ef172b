// The preference pane as its host knows it: NVKServerPrefs, a subclass of NSPreferencePane that passes the
// host's calls on to the pane's session.
#include <optional>
#include <string>

#include "src/frontends/prefpane/appearance_mac.h"
#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/pane_computer.h"
#include "src/frontends/prefpane/pane_session.h"
#include "src/frontends/shared/interface/shipped_interface.h"

#ifdef __APPLE__
__attribute__((visibility("default")))  // all else is hidden there
#endif
@interface NVKServerPrefs : NSPreferencePane {
  void* session_;  // a PaneSession, owned; untyped, as not every compiler can describe a class of C++
#ifdef __APPLE__
  void* appearance_;  // an AppearanceWatch, owned
#endif
}
@end

namespace norvik::prefpane {
namespace {

// The first pane of a process installs the computer, for as long as the process lives.
PaneComputer& computer() {
  static PaneComputer installed;
  return installed;
}

const InterfaceDescription& interface() {
  static const InterfaceDescription shipped = [] {
    std::string error;
    const auto read = shippedInterface(error);
    if (!read) [NSException raise:NSGenericException format:@"Interface.plist: %s", error.c_str()];
    return *read;
  }();
  return shipped;
}

PaneSession& sessionIn(void* field) {
  return *static_cast<PaneSession*>(field);
}

}  // namespace
}  // namespace norvik::prefpane

using norvik::prefpane::sessionIn;

@implementation NVKServerPrefs

- (id)initWithBundle:(NSBundle*)bundle {
  if ((self = [super initWithBundle:bundle]) == nil) return nil;
  norvik::prefpane::PaneComputer& computer = norvik::prefpane::computer();
  computer.bundles().setPaneBundle(bundle);
  session_ = new norvik::prefpane::PaneSession(computer.forSession(), norvik::prefpane::interface());
  return self;
}

- (void)dealloc {
#ifdef __APPLE__
  delete static_cast<norvik::prefpane::AppearanceWatch*>(appearance_);
#endif
  delete &sessionIn(session_);
  [super dealloc];
}

// There is no nib: the view is made from the interface description. A host asks each time that it shows the
// pane, and always gets the same view.
- (NSView*)loadMainView {
  if ([self mainView] != nil) return [self mainView];
  [self setMainView:static_cast<NSView*>(sessionIn(session_).view())];
#ifdef __APPLE__
  norvik::NVKServerPrefs* pane = &sessionIn(session_).pane();
  appearance_ = new norvik::prefpane::AppearanceWatch([self mainView], [pane] {
    pane->ib_button_Auth.setButtonColor(norvik::platform().application.windowBackgroundColor());
  });
#endif
  [self mainViewDidLoad];
  return [self mainView];
}

- (void)mainViewDidLoad {
  sessionIn(session_).mainViewDidLoad();
}

- (void)willSelect {
  sessionIn(session_).willSelect();
}

- (void)didSelect {
  sessionIn(session_).didSelect();
}

- (void)willUnselect {
  sessionIn(session_).willUnselect();
}

- (void)didUnselect {
  sessionIn(session_).didUnselect();
}

// The host may always leave the pane, and may ask twice; a person is asked about pending changes afterwards.
- (NSPreferencePaneUnselectReply)shouldUnselect {
  return NSUnselectNow;
}

@end
