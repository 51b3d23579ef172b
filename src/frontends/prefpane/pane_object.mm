// The preference pane as its host knows it: NVKServerPrefs, a subclass of NSPreferencePane that passes the
// host's calls on to the pane's session.
#include <optional>
#include <string>

#include "src/frontends/prefpane/appearance_mac.h"
#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/border.h"
#include "src/frontends/prefpane/pane_computer.h"
#include "src/frontends/prefpane/pane_language.h"
#include "src/frontends/prefpane/pane_session.h"
#include "src/frontends/shared/interface/shipped_interface.h"
#include "src/frontends/shared/interface/unread_settings.h"
#include "src/frontends/shared/language/translated_interface.h"

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
    choosePaneLanguage();
    return withUnreadSaid(translatedInterface(*read), computer().forSession().services.unreadFiles);
  }();
  return shipped;
}

PaneSession* sessionIn(void* field) {
  return static_cast<PaneSession*>(field);
}

}  // namespace
}  // namespace norvik::prefpane

using norvik::prefpane::atBorder;
using norvik::prefpane::PaneSession;
using norvik::prefpane::sessionIn;

@implementation NVKServerPrefs

- (id)initWithBundle:(NSBundle*)bundle {
  if ((self = [super initWithBundle:bundle]) == nil) return nil;
  session_ = atBorder<PaneSession*>("initWithBundle:", nullptr, [bundle] {
    norvik::prefpane::PaneComputer& computer = norvik::prefpane::computer();
    computer.bundles().setPaneBundle(bundle);
    return new PaneSession(computer.forSession(), norvik::prefpane::interface());
  });
  if (session_ != nullptr) return self;
  [self release];
  return nil;
}

- (void)dealloc {
#ifdef __APPLE__
  delete static_cast<norvik::prefpane::AppearanceWatch*>(appearance_);
#endif
  PaneSession* session = sessionIn(session_);
  atBorder("dealloc", [session] { delete session; });
  [super dealloc];
}

// There is no nib: the view is made from the interface description. A host asks each time that it shows the
// pane, and always gets the same view.
- (NSView*)loadMainView {
  if ([self mainView] != nil) return [self mainView];
  PaneSession* session = sessionIn(session_);
  NSView* view =
      atBorder<NSView*>("loadMainView", nil, [session] { return static_cast<NSView*>(session->view()); });
  if (view == nil) return nil;
  [self setMainView:view];
  [self setInitialKeyView:static_cast<NSView*>(session->mainView()->initialKeyView())];
#ifdef __APPLE__
  appearance_ = atBorder<norvik::prefpane::AppearanceWatch*>("loadMainView", nullptr, [session, view] {
    norvik::NVKServerPrefs& pane = session->pane();
    return new norvik::prefpane::AppearanceWatch(view, [&pane] {
      pane.ib_button_Auth.setButtonColor(norvik::platform().application.windowBackgroundColor());
    });
  });
#endif
  [self mainViewDidLoad];
  return view;
}

- (void)mainViewDidLoad {
  PaneSession* session = sessionIn(session_);
  atBorder("mainViewDidLoad", [session] { session->mainViewDidLoad(); });
}

- (void)willSelect {
  PaneSession* session = sessionIn(session_);
  atBorder("willSelect", [session] { session->willSelect(); });
}

- (void)didSelect {
  PaneSession* session = sessionIn(session_);
  atBorder("didSelect", [session] { session->didSelect(); });
}

- (void)willUnselect {
  PaneSession* session = sessionIn(session_);
  atBorder("willUnselect", [session] { session->willUnselect(); });
}

- (void)didUnselect {
  PaneSession* session = sessionIn(session_);
  atBorder("didUnselect", [session] { session->didUnselect(); });
}

// The host may always leave the pane, and may ask twice; a person is asked about pending changes afterwards.
- (NSPreferencePaneUnselectReply)shouldUnselect {
  return NSUnselectNow;
}

@end
