// What a screen reader says of the pane's views, on a toolkit that lets views say it, which these categories
// make of one that does not.
#include <algorithm>
#include <cctype>
#include <cstdlib>

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/reach/reach_texts.h"
#include "src/frontends/shared/search/search_texts.h"
#import "tests/frontends/prefpane/in_panel.h"
#import "tests/frontends/prefpane/pane_under_test.h"
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

// With a catalogue that puts each text in brackets, and in English.
class SaidWords : public SimulatedPane {};

TEST_F(SaidWords, AreFromTheCatalogue) {
  openEverything();
  int looked = 0;
  NSArray* all = [said() allValues];
  for (NSUInteger i = 0; i < [all count]; ++i) {
    const std::string text = utf8([all objectAtIndex:i]);
    const bool isRole = text.starts_with("AX") || text.starts_with("NSAccessibility");
    const bool hasWords =
        std::ranges::any_of(text, [](unsigned char letter) { return std::isalpha(letter) != 0; });
    if (isRole || !hasWords) continue;
    ++looked;
    EXPECT_EQ(text.starts_with('['), std::getenv("NORVIK_CATALOGUE") != nullptr) << text;
  }
  EXPECT_GT(looked, 60);
}

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

TEST_F(Accessibility, SearchAndStateHaveTheirNamesAndRoles) {
  computer.service.setDaemon(77);
  open();
  SearchPanel& search = session->mainView()->search();
  NSView* field = static_cast<NSView*>(search.field());
  EXPECT_EQ(saidOf(field, "label"), search_texts::kSearch);
  EXPECT_EQ(saidOf(field, "help"), search_texts::kHelp);
  EXPECT_EQ(saidOf(field, "role"), utf8(NSAccessibilityTextFieldRole));
  NSView* results = static_cast<NSView*>(search.results());
  EXPECT_EQ(saidOf(results, "label"), search_texts::kResults);
  EXPECT_EQ(saidOf(results, "role"), utf8(NSAccessibilityTableRole));
  const ReachLine& reach = session->mainView()->reachLine();
  NSView* button = static_cast<NSView*>(reach.button());
  EXPECT_EQ(saidOf(button, "label"), reach_texts::kTitle);
  EXPECT_EQ(saidOf(button, "help"), reach_texts::kHelp);
  EXPECT_EQ(saidOf(button, "role"), utf8(NSAccessibilityButtonRole));
  NSView* words = find(static_cast<NSView*>(reach.view()),
                       [](NSView* one) { return [one isKindOfClass:[NSTextField class]]; });
  EXPECT_FALSE(reach.line().empty());
  EXPECT_EQ(saidOf(words, "label"), reach.line()) << "the whole line, also where it is shortened";
}

TEST_F(Accessibility, EachAnswerOfTheLadderIsReadWithItsWord) {
  open();
  int looked = 0;
  InPanel panel([&looked](NSView* contents) {
    find(contents, [&looked](NSView* one) {
      const std::string label = saidOf(one, "label");
      if (label.starts_with("Yes: ") || label.starts_with("No: ") || label.starts_with("Not ")) ++looked;
      return false;
    });
    pressIn(contents, "Close");
  });
  [static_cast<NSButton*>(session->mainView()->reachLine().button()) performClick:nil];
  EXPECT_EQ(looked, 9);
}

TEST_F(Accessibility, TheSidebarHasItsNameAndRole) {
  open();
  NSView* sidebar = static_cast<NSView*>(session->mainView()->initialKeyView());
  EXPECT_EQ(saidOf(sidebar, "label"), interface.find("ib_oview_confBar")->label);
  EXPECT_EQ(saidOf(sidebar, "role"), utf8(NSAccessibilityOutlineRole));
}

}  // namespace
}  // namespace norvik::prefpane
