// What a screen reader says of the pane's views, on a toolkit that lets views say it, which these categories
// make of one that does not.
#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/text.h"
#import "tests/frontends/prefpane/simulated_pane.h"

@interface NSView (NVKSaid)
- (void)setAccessibilityLabel:(NSString*)words;
- (void)setAccessibilityHelp:(NSString*)words;
- (void)setAccessibilityRole:(NSString*)words;
@end

namespace {

// By the view and what is said.
NSMutableDictionary* said() {
  static NSMutableDictionary* const all = [NSMutableDictionary new];
  return all;
}

NSString* keyOf(NSView* view, const char* what) {
  return [NSString stringWithFormat:@"%p %s", static_cast<void*>(view), what];
}

std::string saidOf(NSView* view, const char* what) {
  return norvik::prefpane::utf8([said() objectForKey:keyOf(view, what)]);
}

}  // namespace

@implementation NSView (NVKSaid)
- (void)setAccessibilityLabel:(NSString*)words {
  [said() setObject:words forKey:keyOf(self, "label")];
}
- (void)setAccessibilityHelp:(NSString*)words {
  [said() setObject:words forKey:keyOf(self, "help")];
}
- (void)setAccessibilityRole:(NSString*)words {
  [said() setObject:words forKey:keyOf(self, "role")];
}
@end

namespace norvik::prefpane {
namespace {

NSString* roleOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::checkBox:
      return NSAccessibilityCheckBoxRole;
    case ControlKind::radioButton:
      return NSAccessibilityRadioButtonRole;
    case ControlKind::slider:
      return NSAccessibilitySliderRole;
    case ControlKind::popUp:
      return NSAccessibilityPopUpButtonRole;
    case ControlKind::textField:
      return NSAccessibilityTextFieldRole;
    case ControlKind::label:
      return NSAccessibilityStaticTextRole;
    default:
      return NSAccessibilityButtonRole;
  }
}

class Accessibility : public SimulatedPane {};

TEST_F(Accessibility, EveryControlHasItsNameItsHelpAndItsRole) {
  open();
  int looked = 0;
  for (const ControlDescription* control : interface.controls()) {
    NSView* view = static_cast<NSView*>(session->mainView()->viewOf(control->outlet));
    if (view == nil) continue;  // hidden, or the sidebar
    SCOPED_TRACE(control->outlet);
    ++looked;
    EXPECT_NE(saidOf(view, "label"), "");
    EXPECT_EQ(saidOf(view, "label"), control->label.empty() ? control->title : control->label);
    EXPECT_EQ(saidOf(view, "help"), control->help);
    EXPECT_EQ(saidOf(view, "role"), utf8(roleOf(control->kind)));
  }
  EXPECT_GT(looked, 40);
}

TEST_F(Accessibility, TheSidebarHasItsNameAndRole) {
  open();
  NSView* sidebar = static_cast<NSView*>(session->mainView()->initialKeyView());
  EXPECT_EQ(saidOf(sidebar, "label"), interface.find("ib_oview_confBar")->label);
  EXPECT_EQ(saidOf(sidebar, "role"), utf8(NSAccessibilityOutlineRole));
}

}  // namespace
}  // namespace norvik::prefpane
