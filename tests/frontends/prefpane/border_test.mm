// Exceptions at the border of the toolkit: those of C++ end there and are logged, and the pane goes on.
#include <stdexcept>

#import "src/frontends/prefpane/call.h"
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/simulated_pane.h"

namespace norvik::prefpane {
namespace {

class Border : public SimulatedPane {
 protected:
  Border() {
    computer.effects.setSink([this](EffectKind kind, const std::string& line) {
      if (kind == EffectKind::log) logged += line + "\n";
    });
  }
  NSOutlineView* sidebar() { return static_cast<NSOutlineView*>(session->mainView()->initialKeyView()); }

  std::string logged;
};

TEST_F(Border, ACommandThatFailsIsLoggedAndThePaneGoesOn) {
  open();
  session->mainView()->setCommand(pane().ib_button_Help, [] { throw std::runtime_error("no page"); });
  EXPECT_NO_THROW(press("ib_button_Help"));
  EXPECT_NE(logged.find("Norvik[E]: viewChanged: no page"), std::string::npos) << logged;
  choosePage("Mouse");
  EXPECT_EQ(shownPage(), "Mouse");
}

TEST_F(Border, ATickThatFailsIsFollowedByTheNext) {
  open();
  int ticks = 0;
  runLoop.ticked = [&ticks] {
    ++ticks;
    throw std::runtime_error("no tick");
  };
  EXPECT_NO_THROW(run(0.7));
  EXPECT_GE(ticks, 2);
  EXPECT_NE(logged.find("Norvik[E]: call no tick"), std::string::npos) << logged;
}

TEST_F(Border, AFailureInTheSidebarsSelectionEndsThere) {
  openEverything();
  portInUse = [](int64_t) -> bool { throw std::runtime_error("no ports"); };
  session.reset();
  [window close];
  open();
  press("ib_button_Auth");
  pane().ib_admin_edbox_nvkPort.setStringValue("4321");
  EXPECT_NO_THROW([sidebar() selectRowIndexes:[NSIndexSet indexSetWithIndex:5] byExtendingSelection:NO]);
  EXPECT_NE(logged.find("outlineViewSelectionDidChange: no ports"), std::string::npos) << logged;
  EXPECT_EQ(shownPage(), "Norvik clients");
}

TEST_F(Border, TheToolkitsOwnExceptionsReachTheToolkit) {
  const Function raise = [] { [NSException raise:@"NVKTest" format:@"on purpose"]; };
  NVKCall* call = [[[NVKCall alloc] initWithCopyOf:&raise] autorelease];
  bool reached = false;
  @try {
    [call call];
  } @catch (...) {
    reached = true;
  }
  EXPECT_TRUE(reached);
  EXPECT_EQ(logged, "");
}

}  // namespace
}  // namespace norvik::prefpane
