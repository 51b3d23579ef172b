// The keyboard: Tab reaches each control of the page that is shown, the arrows each page of the sidebar.
#include <set>

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/text.h"
#import "tests/frontends/prefpane/simulated_pane.h"

namespace norvik::prefpane {
namespace {

class Keyboard : public SimulatedPane {
 protected:
  NSOutlineView* sidebar() { return static_cast<NSOutlineView*>(session->mainView()->initialKeyView()); }

  void press(unichar key) {
    NSString* keys = [NSString stringWithCharacters:&key length:1];
    [window sendEvent:[NSEvent keyEventWithType:NSKeyDown
                                             location:NSZeroPoint
                                        modifierFlags:0
                                            timestamp:0
                                         windowNumber:[window windowNumber]
                                              context:nil
                                           characters:keys
                          charactersIgnoringModifiers:keys
                                            isARepeat:NO
                                              keyCode:0]];
  }
  // The views that Tab comes to, from the sidebar until it is there again.
  std::set<void*> tabbed() {
    std::set<void*> seen;
    [window makeFirstResponder:sidebar()];
    for (int i = 0; i < 60; ++i) {
      press('\t');
      id now = [window firstResponder];
      if ([now isKindOfClass:[NSText class]])
        now = [now delegate];  // a field is edited by the window's editor
      if (now == sidebar()) return seen;
      seen.insert(now);
    }
    ADD_FAILURE() << "no way back to the sidebar";
    return seen;
  }
};

TEST_F(Keyboard, TheSidebarHasItFirst) {
  open();
  EXPECT_EQ([window firstResponder], sidebar());
  EXPECT_EQ([window initialFirstResponder], sidebar());
}

TEST_F(Keyboard, TabReachesEveryControlOfEachPage) {
  openEverything();
  for (const TabDescription& tab : interface.tabs) {
    SCOPED_TRACE(tab.label);
    choosePage(tab.label.substr(tab.label.find(':') + 1));
    pane().ib_tview_confView.selectItem(
        pane().ib_tview_confView.items()[static_cast<std::size_t>(&tab - interface.tabs.data())]);
    const std::set<void*> seen = tabbed();
    int expected = 0;
    const auto look = [&](const ControlDescription& control) {
      NSView* view = static_cast<NSView*>(session->mainView()->viewOf(control.outlet));
      if (view == nil || control.kind == ControlKind::label || control.displayOnly) return;
      if (![(NSControl*)view isEnabled] || [view isHiddenOrHasHiddenAncestor]) return;
      ++expected;
      EXPECT_TRUE(seen.contains(view)) << control.outlet;
    };
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& control : row.controls) look(control);
      }
    }
    for (const ControlDescription& control : interface.frame) look(control);
    EXPECT_GT(expected, 2);
  }
}

// A host may show its panes in another window, and the toolkit edits one field of a window at a time.
TEST_F(Keyboard, WhatIsTypedReachesThePaneInALaterWindowToo) {
  openEverything();
  type("ib_admin_edbox_nvkPort", "4500");
  EXPECT_EQ(pane().ib_admin_edbox_nvkPort.stringValue(), "4500");
  [window setContentView:[[NSView new] autorelease]];
  [window close];
  session.reset();
  openEverything();
  type("ib_admin_edbox_nvkPort", "4600");
  EXPECT_EQ(pane().ib_admin_edbox_nvkPort.stringValue(), "4600");
  type("ib_admin_edbox_rdpPort", "4700");
  EXPECT_EQ(pane().ib_admin_edbox_rdpPort.stringValue(), "4700");
}

TEST_F(Keyboard, ArrowsPassOverHeadings) {
  openEverything();
  [window makeFirstResponder:sidebar()];
  press(NSHomeFunctionKey);
  EXPECT_EQ(shownPage(), "Image");
  std::vector<std::string> pages;
  for (int i = 0; i < 9; ++i) {
    press(NSDownArrowFunctionKey);
    pages.push_back(shownPage());
  }
  EXPECT_EQ(pages,
            (std::vector<std::string>{"Mouse", "Server", "Norvik clients", "RDP clients", "Connections",
                                      "Image", "System", "Notifications", "Notifications"}));
  for (int i = 0; i < 7; ++i) press(NSUpArrowFunctionKey);
  EXPECT_EQ(shownPage(), "Mouse");
  press(NSEndFunctionKey);
  EXPECT_EQ(shownPage(), "Notifications");
}

TEST_F(Keyboard, ArrowsStayOffLockedPages) {
  open();
  for (int i = 0; i < 3; ++i) press(NSDownArrowFunctionKey);
  EXPECT_EQ(shownPage(), "Mouse");
}

}  // namespace
}  // namespace norvik::prefpane
