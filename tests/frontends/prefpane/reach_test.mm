// The line beside the lock and the ladder: what they show, and when somebody looks.
#import "tests/frontends/prefpane/in_panel.h"
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/simulated_pane.h"

#include <thread>

#include "src/frontends/prefpane/background_work.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/server_state.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::prefpane {
namespace {

class PaneReachTest : public SimulatedPane {
 protected:
  PaneReachTest() {
    computer.host.setAddresses({"127.0.0.1", "192.0.2.7"});
    computer.network.setName("mac.example.com", {"192.0.2.7"});
  }
  void openRunning() {
    computer.service.setDaemon(77);
    open();
  }
  ReachLine& reach() { return session->mainView()->reachLine(); }
  std::string line() { return reach().line(); }
  NSView* lineView() { return static_cast<NSView*>(reach().view()); }
  void pressLadder() { [static_cast<NSButton*>(reach().button()) performClick:nil]; }
  static NSTabView* tabsIn(NSView* contents) {
    return (NSTabView*)find(contents, [](NSView* one) { return [one isKindOfClass:[NSTabView class]]; });
  }
  // All that the tab in front says, in lines.
  static std::string wordsIn(NSView* contents) {
    std::string words;
    find([[tabsIn(contents) selectedTabViewItem] view], [&words](NSView* one) {
      if ([one isKindOfClass:[NSTextField class]]) words += utf8([(NSTextField*)one stringValue]) + "\n";
      return false;
    });
    return words;
  }
};

TEST_F(PaneReachTest, StateAndAddressesAreSeenWhileTheLockIsClosed) {
  openRunning();
  EXPECT_FALSE(pane().authorized());
  EXPECT_EQ(line(), "Started · Norvik mac.example.com:4074 · RDP mac.example.com:3390");
  EXPECT_FALSE([lineView() isHiddenOrHasHiddenAncestor]);
  NVKDot* dot = (NVKDot*)find(lineView(), [](NSView* one) { return [one isKindOfClass:[NVKDot class]]; });
  EXPECT_TRUE([[dot color] isEqual:toolkitColor(stateColor(pane()))]);
  NSTextField* words =
      (NSTextField*)find(lineView(), [](NSView* one) { return [one isKindOfClass:[NSTextField class]]; });
  EXPECT_TRUE(utf8([words stringValue]).starts_with("Started · Norvik mac.example.com:4074"));
  EXPECT_EQ(utf8([words toolTip]), line()) << "also what there is no room for";
}

TEST_F(PaneReachTest, AWiderHostShowsMoreOfIt) {
  openRunning();
  NSTextField* words =
      (NSTextField*)find(lineView(), [](NSView* one) { return [one isKindOfClass:[NSTextField class]]; });
  NSView* content = [window contentView];
  EXPECT_TRUE(utf8([words stringValue]).ends_with("…"));
  [content setFrameSize:NSMakeSize(NSWidth([content frame]) + 400, NSHeight([content frame]))];
  EXPECT_EQ(utf8([words stringValue]), line());
}

TEST_F(PaneReachTest, AServiceThatNobodyCanReachIsSaidInTheLine) {
  computer.ports.hold(4074, 812, "nginx");
  openRunning();
  EXPECT_EQ(line(), "Started · Norvik clients cannot connect · RDP mac.example.com:3390");
}

TEST_F(PaneReachTest, AServerThatComesAndGoesIsNoticed) {
  open();
  EXPECT_EQ(line(), "Stopped");
  computer.service.setDaemon(77);
  run(0.6);
  EXPECT_TRUE(line().starts_with("Started · Norvik mac")) << line();
  computer.service.setDaemon(std::nullopt);
  run(0.6);
  EXPECT_EQ(line(), "Stopped");
}

TEST_F(PaneReachTest, NobodyLooksWhileAnotherPaneIsShown) {
  open();
  session->willUnselect();
  session->didUnselect();
  computer.service.setDaemon(77);
  const int before = looks;
  run(0.6);
  EXPECT_EQ(looks, before);
  session->willSelect();
  session->didSelect();
  EXPECT_EQ(looks, before + 1);
  EXPECT_TRUE(line().starts_with("Started · Norvik mac")) << line();
}

TEST_F(PaneReachTest, TheLadderHasAnAnswerToEachQuestion) {
  openRunning();
  InPanel panel([this](NSView* contents) {
    const std::string words = wordsIn(contents);
    EXPECT_NE(words.find("Yes\nThe server is installed.\n"), std::string::npos) << words;
    EXPECT_NE(words.find("Not known\n"), std::string::npos) << words;
    EXPECT_EQ([tabsIn(contents) numberOfTabViewItems], 2);
    EXPECT_EQ(utf8([[tabsIn(contents) selectedTabViewItem] label]), "Norvik clients");
    EXPECT_NE(find(contents, [](NSView* one) { return utf8(NSStringFromClass([one class])) == "NVKQrView"; }),
              (NSView*)nil);
    picture("reach");
    pressIn(contents, "Close");
  });
  pressLadder();
  EXPECT_EQ(panel.seen, 1);
}

TEST_F(PaneReachTest, TheServiceThatFailsIsInFrontWithItsReason) {
  computer.ports.hold(3390, 812, "nginx");
  openRunning();
  InPanel panel([](NSView* contents) {
    EXPECT_EQ(utf8([[tabsIn(contents) selectedTabViewItem] label]), "RDP clients");
    const std::string words = wordsIn(contents);
    EXPECT_NE(words.find("No\nPort 3390 is taken by nginx, process 812.\n"), std::string::npos) << words;
    pressIn(contents, "Close");
  });
  pressLadder();
  EXPECT_EQ(panel.seen, 1);
}

TEST_F(PaneReachTest, AnAddressCanBeCopied) {
  openRunning();
  InPanel panel([](NSView* contents) {
    NSView* copy = find(contents, [](NSView* one) {
      return [one isKindOfClass:[NSButton class]] && utf8([one toolTip]) == "Copy 192.0.2.7:4074";
    });
    ASSERT_NE(copy, (NSView*)nil);
    [(NSButton*)copy performClick:nil];
    pressIn(contents, "Close");
  });
  pressLadder();
  EXPECT_EQ(panel.seen, 1);
  EXPECT_EQ(utf8([[NSPasteboard generalPasteboard] stringForType:NSStringPboardType]), "192.0.2.7:4074");
}

TEST_F(PaneReachTest, LookAgainSeesWhatIsDifferentAndKeepsTheTab) {
  openRunning();
  InPanel panel([this](NSView* contents) {
    [tabsIn(contents) selectTabViewItemAtIndex:1];
    computer.network.setName("mac.example.com", {});
    pressIn(contents, "Look Again");
    EXPECT_EQ([tabsIn(contents) indexOfTabViewItem:[tabsIn(contents) selectedTabViewItem]], 1);
    const std::string words = wordsIn(contents);
    EXPECT_NE(words.find("No\nThe name mac.example.com leads nowhere.\n"), std::string::npos) << words;
    pressIn(contents, "Close");
  });
  pressLadder();
  EXPECT_EQ(panel.seen, 1);
  EXPECT_NE(line().find("cannot connect"), std::string::npos) << line();
}

TEST_F(PaneReachTest, EscapeClosesTheLadder) {
  openRunning();
  InPanel panel([](NSView* contents) {
    [NSApp sendEvent:[NSEvent keyEventWithType:NSKeyDown
                                            location:NSZeroPoint
                                       modifierFlags:0
                                           timestamp:0
                                        windowNumber:[[contents window] windowNumber]
                                             context:nil
                                          characters:@"\033"
                         charactersIgnoringModifiers:@"\033"
                                           isARepeat:NO
                                             keyCode:0]];
  });
  pressLadder();
  EXPECT_EQ(panel.seen, 1);
}

// A name service that does not answer at once.
TEST_F(PaneReachTest, TheMainThreadGoesOnWhileTheNetworkIsAsked) {
  BackgroundWork work;
  background = [&work](std::function<void()> job, std::function<void()> then) {
    work.run(std::move(job), std::move(then));
  };
  openRunning();
  EXPECT_EQ(line(), "Started") << "until somebody knows";
  const NSDate* end = [NSDate dateWithTimeIntervalSinceNow:5];
  while (line() == "Started" && [end timeIntervalSinceNow] > 0) run(0.05);
  EXPECT_EQ(line(), "Started · Norvik mac.example.com:4074 · RDP mac.example.com:3390");
}

TEST_F(PaneReachTest, APaneThatGoesWhileTheNetworkIsAskedIsNotTold) {
  std::function<void()> job, then;
  background = [&](std::function<void()> work, std::function<void()> afterwards) {
    job = std::move(work);
    then = std::move(afterwards);
  };
  openRunning();
  ASSERT_TRUE(job);
  [window setContentView:[[NSView new] autorelease]];
  session.reset();
  job();
  then();
}

TEST(PaneBackgroundWork, WorksBesideTheMainThreadAndTellsIt) {
  BackgroundWork background;
  std::thread::id worked, told;
  background.run([&] { worked = std::this_thread::get_id(); }, [&] { told = std::this_thread::get_id(); });
  const NSDate* end = [NSDate dateWithTimeIntervalSinceNow:5];
  while (told == std::thread::id() && [end timeIntervalSinceNow] > 0)
    [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                             beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
  EXPECT_EQ(told, std::this_thread::get_id());
  EXPECT_NE(worked, std::thread::id());
  EXPECT_NE(worked, told);
}

TEST(PaneBackgroundWork, TellsNobodyOnceItIsGone) {
  bool worked = false, told = false;
  {
    BackgroundWork background;
    background.run([&worked] { worked = true; }, [&told] { told = true; });
  }
  EXPECT_TRUE(worked) << "it was waited for";
  [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                           beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.1]];
  EXPECT_FALSE(told);
}

}  // namespace
}  // namespace norvik::prefpane
