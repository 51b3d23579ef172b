// The search field: what its keys do, where a result leads, and what the lock keeps.
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/simulated_pane.h"

#include "src/frontends/prefpane/text.h"

namespace norvik::prefpane {
namespace {

class PaneSearch : public SimulatedPane {
 protected:
  SearchPanel& panel() { return session->mainView()->search(); }
  NSTextField* field() { return static_cast<NSTextField*>(panel().field()); }
  NSTableView* results() { return static_cast<NSTableView*>(panel().results()); }
  NSView* sidebar() { return static_cast<NSView*>(session->mainView()->initialKeyView()); }
  bool fieldHasKeyboard() {
    id now = [window firstResponder];
    return [now isKindOfClass:[NSText class]] && [now delegate] == (id)field();
  }
  void press(unichar key, NSUInteger modifiers = 0) {
    NSString* keys = [NSString stringWithCharacters:&key length:1];
    [NSApp sendEvent:[NSEvent keyEventWithType:NSKeyDown
                                            location:NSZeroPoint
                                       modifierFlags:modifiers
                                           timestamp:0
                                        windowNumber:[window windowNumber]
                                             context:nil
                                          characters:keys
                         charactersIgnoringModifiers:keys
                                           isARepeat:NO
                                             keyCode:0]];
  }
  void search(const std::string& words) {
    press('f', NSControlKeyMask);
    ASSERT_TRUE(fieldHasKeyboard());
    for (const char letter : words) press(static_cast<unichar>(letter));
    ASSERT_EQ(utf8([field() stringValue]), words);
  }
  NSView* ring() {
    return find([window contentView],
                [](NSView* one) { return utf8(NSStringFromClass([one class])) == "NVKSearchRing"; });
  }
  std::string first() { return panel().rowText(0); }
};

TEST_F(PaneSearch, TheResultsTakeTheSidebarsPlaceWhileThereAreWords) {
  open();
  EXPECT_FALSE([sidebar() isHiddenOrHasHiddenAncestor]);
  EXPECT_TRUE([results() isHiddenOrHasHiddenAncestor]);
  search("mouse");
  EXPECT_TRUE([sidebar() isHiddenOrHasHiddenAncestor]);
  EXPECT_FALSE([results() isHiddenOrHasHiddenAncestor]);
  EXPECT_EQ(first(), "Mouse\nCurrent User");
  press(033);
  EXPECT_FALSE([sidebar() isHiddenOrHasHiddenAncestor]);
  EXPECT_TRUE([results() isHiddenOrHasHiddenAncestor]);
  EXPECT_EQ(utf8([field() stringValue]), "");
}

TEST_F(PaneSearch, ReturnShowsTheSettingWithARingUntilTheKeyboardMoves) {
  open();
  search("swap");
  press('\r');
  NSView* box = static_cast<NSView*>(session->mainView()->viewOf("ib_user_chkbox_mseSwap"));
  EXPECT_EQ(shownPage(), "Mouse");
  EXPECT_EQ([window firstResponder], box);
  ASSERT_NE(ring(), (NSView*)nil);
  EXPECT_TRUE(NSContainsRect([ring() frame], [box frame]));
  EXPECT_TRUE(NSContainsRect([[ring() superview] bounds], [ring() frame])) << "nothing of it is cut off";
  EXPECT_EQ([[[box superview] superview] hitTest:NSMakePoint(NSMidX([box frame]), NSMidY([box frame]))], box);
  run(0.3);
  EXPECT_NE(ring(), (NSView*)nil);
  press('\t');
  run(0.3);
  EXPECT_EQ(ring(), (NSView*)nil);
}

TEST_F(PaneSearch, AnotherPageTakesTheRingAway) {
  open();
  search("swap");
  press('\r');
  choosePage("Image");
  EXPECT_EQ(ring(), (NSView*)nil);
}

TEST_F(PaneSearch, TheArrowsChooseWithoutLeavingTheField) {
  open();
  search("image");
  EXPECT_EQ([results() selectedRow], 0);
  press(NSDownArrowFunctionKey);
  EXPECT_EQ([results() selectedRow], 1);
  EXPECT_TRUE(fieldHasKeyboard());
  press(NSUpArrowFunctionKey);
  press(NSUpArrowFunctionKey);
  EXPECT_EQ([results() selectedRow], 0);
}

TEST_F(PaneSearch, ALockedSettingIsFoundAndShownWhenTheLockIsOpen) {
  open();
  search("3390");
  EXPECT_NE(first().find("Locked: Server Administrator, RDP clients"), std::string::npos) << first();
  picture("search");
  press('\r');
  EXPECT_EQ(outcome().sentence, "The page RDP clients is locked. Open the lock to see it.");
  NSView* lock = static_cast<NSView*>(session->mainView()->viewOf("ib_button_Auth"));
  EXPECT_EQ([window firstResponder], lock);
  [(NSButton*)lock performClick:nil];
  ASSERT_TRUE(pane().authorized());
  EXPECT_EQ(shownPage(), "RDP clients");
  EXPECT_NE(ring(), (NSView*)nil);
  EXPECT_TRUE(outcome().isEmpty());
}

TEST_F(PaneSearch, APageIsOpened) {
  openEverything();
  search("notifications");
  press('\r');
  EXPECT_EQ(shownPage(), "Notifications");
  EXPECT_EQ(ring(), (NSView*)nil);
  EXPECT_EQ([window firstResponder], sidebar());
}

TEST_F(PaneSearch, AClickChooses) {
  open();
  search("swap");
  const NSRect row = [results() convertRect:[results() rectOfRow:0] toView:nil];
  for (const NSEventType type : {NSLeftMouseDown, NSLeftMouseUp}) {
    [NSApp postEvent:[NSEvent mouseEventWithType:type
                                        location:NSMakePoint(NSMidX(row), NSMidY(row))
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:[window windowNumber]
                                         context:nil
                                     eventNumber:0
                                      clickCount:1
                                        pressure:1]
             atStart:NO];
  }
  run(0.2);
  EXPECT_EQ(shownPage(), "Mouse");
  EXPECT_NE(ring(), (NSView*)nil);
}

TEST_F(PaneSearch, NothingFoundIsSaidAndCannotBeChosen) {
  open();
  search("zzzz");
  EXPECT_EQ(first(), "Nothing is found.");
  EXPECT_EQ([results() selectedRow], -1);
  press('\r');
  EXPECT_EQ(utf8([field() stringValue]), "zzzz");
}

TEST_F(PaneSearch, ASlashOrTheCommandKeyBeginsASearchExceptWhereTextIsEdited) {
  openEverything();
  press('/');
  EXPECT_TRUE(fieldHasKeyboard());
  EXPECT_EQ(utf8([field() stringValue]), "");
  press('/');
  EXPECT_EQ(utf8([field() stringValue]), "/");
  press(033);
  [window makeFirstResponder:view("ib_user_chkbox_mseSwap")];
  press('f', NSCommandKeyMask);
  EXPECT_TRUE(fieldHasKeyboard());
  type("ib_admin_edbox_nvkPort", "45");
  press('/');
  EXPECT_FALSE(fieldHasKeyboard());
}

}  // namespace
}  // namespace norvik::prefpane
