// Start, stop and restart in the pane: the question before those that end connections, the progress, what is
// clicked meanwhile, the reason where it fails; and what is said where the server uses other values than
// those that are stored.
#include <algorithm>
#include <set>

#import "tests/frontends/prefpane/in_panel.h"
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/simulated_pane.h"

namespace norvik::prefpane {
namespace {

constexpr const char* kStartButton = "ib_admin_button_svrStart";
constexpr const char* kRestartButton = "ib_admin_button_svrRestart";

class PaneOrders : public SimulatedPane {
 protected:
  // Unlocked, the page of the server shown.
  void openServerPage(bool running) {
    if (running) computer.service.setDaemon(77);
    open();
    press("ib_button_Auth");
    choosePage("Server");
  }
  NSProgressIndicator* bar() {
    return (NSProgressIndicator*)find(static_cast<NSView*>(messages().view()), [](NSView* one) {
      return [one isKindOfClass:[NSProgressIndicator class]];
    });
  }
  NSEvent* mouse(NSEventType type, NSView* at) {
    const NSRect bounds = [at bounds];
    return [NSEvent mouseEventWithType:type
                              location:[at convertPoint:NSMakePoint(NSMidX(bounds), NSMidY(bounds))
                                                 toView:nil]
                         modifierFlags:0
                             timestamp:0
                          windowNumber:[window windowNumber]
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1];
  }
  void clickLater(NSView* at) {
    [NSApp postEvent:mouse(NSLeftMouseDown, at) atStart:NO];
    [NSApp postEvent:mouse(NSLeftMouseUp, at) atStart:NO];
  }
};

TEST_F(PaneOrders, AClickThatComesWhenThePaneListensCounts) {
  openServerPage(false);
  clickLater(view(kStartButton));
  run(0.3);
  EXPECT_TRUE(launched("\"start\"")) << "the clicks of the next test can hit";
}

TEST_F(PaneOrders, WhatIsClickedWhileThePaneWaitsIsDropped) {
  openServerPage(false);
  computer.service.setStartDelay(3);
  NSView* start = view(kStartButton);
  NSView* lock = view("ib_button_Auth");
  int waits = 0;
  processes.waits = [&] {
    ++waits;
    clickLater(start);
    clickLater(lock);
  };
  InPanel question("Cancel");  // before the server would be stopped
  press(kStartButton);
  processes.waits = nullptr;
  run(0.5);
  EXPECT_GT(waits, 30) << "twenty passes of the loop, and thirteen dots";
  EXPECT_EQ(question.seen, 0);
  EXPECT_FALSE(launched("\"stop\""));
  EXPECT_TRUE(pane().authorized()) << "the lock was not clicked";
}

TEST_F(PaneOrders, StopAndRestartSayThatConnectionsEndAndAsk) {
  openServerPage(true);
  for (const char* outlet : {kStartButton, kRestartButton}) {
    InPanel cancel("Cancel");
    press(outlet);
    EXPECT_EQ(cancel.seen, 1);
    EXPECT_NE(cancel.words.find("is disconnected"), std::string::npos) << cancel.words;
    EXPECT_TRUE(computer.service.daemonRuns());
    EXPECT_FALSE(launched("\"stop\""));
    EXPECT_EQ(read(), "");
  }
  InPanel stop("Stop");
  press(kStartButton);
  EXPECT_EQ(stop.seen, 1);
  EXPECT_FALSE(computer.service.daemonRuns());
  EXPECT_EQ(read(), "Done: The server is stopped.");
}

TEST_F(PaneOrders, StartAsksNothingAndShowsWhatItWaitsFor) {
  openServerPage(false);
  computer.service.setStartDelay(3);
  std::vector<double> values;
  std::set<std::string> sentences;
  double maximum = 0;
  processes.waits = [&] {
    if ([bar() isHiddenOrHasHiddenAncestor]) return;
    maximum = [bar() maxValue];
    values.push_back([bar() doubleValue]);
    sentences.insert(read());
    if (values.size() == 30) picture("starting");
  };
  press(kStartButton);
  EXPECT_EQ(maximum, 15 + 10);
  ASSERT_GT(values.size(), 10u);
  EXPECT_TRUE(std::ranges::is_sorted(values));
  EXPECT_GE(values.back(), 24);
  EXPECT_EQ(sentences, (std::set<std::string>{"Under way: Waiting for the server to start",
                                              "Under way: Waiting for the server to settle"}));
  EXPECT_EQ(read(), "Done: The server is started.");
  EXPECT_TRUE([bar() isHiddenOrHasHiddenAncestor]);
}

TEST_F(PaneOrders, AServerThatDoesNotComeUpIsSaidAndCanBeTriedAgain) {
  openServerPage(false);
  computer.service.setStartDelay(std::nullopt);
  press(kStartButton);
  EXPECT_NE(read().find("Failed: The server did not start."), std::string::npos) << read();
  computer.service.setStartDelay(1);
  pressButton(MessageAction::retry);
  EXPECT_EQ(outcome().kind, MessageKind::done) << read();
}

TEST_F(PaneOrders, AServerThatIsNotInstalledIsTheReason) {
  openServerPage(false);
  computer.fileSystem.remove("/usr/sbin/nvkservice");
  press(kStartButton);
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  EXPECT_NE(read().find("not installed"), std::string::npos) << read();
}

TEST_F(PaneOrders, WithoutAServerNothingIsOffered) {
  computer.fileSystem.remove("/usr/sbin/nvkservice");
  openServerPage(false);
  EXPECT_NE(messages().message(MessageSubject::inForce).sentence.find("not installed on this computer"),
            std::string::npos);
  for (const char* outlet : {kStartButton, "ib_admin_button_dispManager", "ib_admin_button_accManager"})
    EXPECT_FALSE([(NSControl*)view(outlet) isEnabled]) << outlet;
}

TEST_F(PaneOrders, WhatIsInForceIsSaidWhereItDiffersAndCanBeTakenUp) {
  computer.ports.setServerPorts({4999, 3390});
  openServerPage(true);
  const WindowMessage& inForce = messages().message(MessageSubject::inForce);
  ASSERT_NE(inForce.sentence.find("4999"), std::string::npos) << inForce.sentence;
  EXPECT_TRUE(read().starts_with("Warning:")) << read();
  picture("in-force");
  pressButton(MessageAction::takeUp);
  EXPECT_TRUE(launched("\"apply\""));
  EXPECT_TRUE(messages().message(MessageSubject::inForce).isEmpty());
  EXPECT_EQ(read(), "Done: The server uses what is stored. Told the server.");
}

TEST_F(PaneOrders, WhatIsInForceStaysClosedUntilItSaysMore) {
  computer.ports.setServerPorts({4999, 3390});
  openServerPage(true);
  [buttonWith("\u00d7") performClick:nil];
  EXPECT_EQ(read(), "");
  saveElsewhere(4074, true);  // after which it is looked at again
  noticeFiles();
  EXPECT_TRUE(messages().message(MessageSubject::inForce).isEmpty());
  computer.ports.setServerPorts({4998, 3390});
  saveElsewhere(4074, false);
  noticeFiles();
  EXPECT_NE(messages().message(MessageSubject::inForce).sentence.find("4998"), std::string::npos);
}

TEST_F(PaneOrders, APortThatSomebodyElseHasIsSaidWithTheirName) {
  openServerPage(false);
  computer.ports.hold(4074, 999, "nginx");
  press(kStartButton);
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  EXPECT_NE(read().find("nginx"), std::string::npos) << read();
}

}  // namespace
}  // namespace norvik::prefpane
