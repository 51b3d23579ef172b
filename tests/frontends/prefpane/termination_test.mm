// The end of the host: Quit asks about changes as leaving does, and the system does not kill the host while
// changes are pending.
#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/drawing_waits.h"
#import "tests/frontends/prefpane/in_panel.h"
#import "tests/frontends/prefpane/simulated_pane.h"

#import <objc/runtime.h>

namespace norvik::prefpane {
namespace {

int disabled = 0;
id disable(id /*info*/, SEL /*selector*/) {
  ++disabled;
  return nil;
}
id enable(id /*info*/, SEL /*selector*/) {
  --disabled;
  return nil;
}

class Termination : public SimulatedPane {
 protected:
  Termination() { disabled = 0; }
  ~Termination() override {
    method_setImplementation(disable_, usualDisable_);
    method_setImplementation(enable_, usualEnable_);
  }
  // What the application does when it is quit.
  static void quit() {
    [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationWillTerminateNotification
                                                        object:NSApp];
  }
  void changeMouse() { press("ib_user_chkbox_mseSwap"); }

 private:
  Method disable_ = class_getInstanceMethod([NSProcessInfo class], @selector(disableSuddenTermination));
  Method enable_ = class_getInstanceMethod([NSProcessInfo class], @selector(enableSuddenTermination));
  IMP usualDisable_ = method_setImplementation(disable_, reinterpret_cast<IMP>(disable));
  IMP usualEnable_ = method_setImplementation(enable_, reinterpret_cast<IMP>(enable));
};

TEST_F(Termination, QuitAsksAndApplies) {
  open();
  changeMouse();
  InPanel panel("Apply Now");
  quit();
  EXPECT_EQ(panel.seen, 1);
  EXPECT_NE(panel.words.find("Norvik Server options changed"), std::string::npos) << panel.words;
  EXPECT_FALSE(pane().userConfigChanged());
  EXPECT_EQ(pane().m_user_mseSwap, 1);
}

TEST_F(Termination, QuitAsksAndDiscards) {
  open();
  changeMouse();
  InPanel panel("Discard Changes");
  quit();
  EXPECT_EQ(panel.seen, 1);
  EXPECT_FALSE(pane().userConfigChanged());
  EXPECT_EQ(pane().m_user_mseSwap, 0);
}

TEST_F(Termination, QuitAsksNothingWithoutChangesOrOnceThePaneWasLeft) {
  open();
  InPanel panel("Discard Changes");
  quit();
  EXPECT_EQ(panel.seen, 0);
  changeMouse();
  pane().m_isSelected = false;
  quit();
  EXPECT_EQ(panel.seen, 0);
}

TEST_F(Termination, APaneThatIsGoneAsksNothing) {
  open();
  changeMouse();
  [window setContentView:[[NSView new] autorelease]];
  session.reset();
  InPanel panel("Discard Changes");
  quit();
  EXPECT_EQ(panel.seen, 0);
}

TEST_F(Termination, IsNotSuddenWhileChangesArePending) {
  open();
  EXPECT_EQ(disabled, 0);
  changeMouse();
  EXPECT_EQ(disabled, 1);
  press("ib_user_chkbox_imgDefs");
  EXPECT_EQ(disabled, 1);
  press("ib_user_chkbox_imgDefs");
  changeMouse();
  EXPECT_EQ(disabled, 0);
  changeMouse();
  press("ib_button_Apply");
  EXPECT_EQ(disabled, 0);
  changeMouse();
  EXPECT_EQ(disabled, 1);
  [window setContentView:[[NSView new] autorelease]];
  session.reset();
  EXPECT_EQ(disabled, 0) << "nothing is pending in a pane that is gone";
}

// The pane's lock of changes is held as long as a save runs.
TEST_F(Termination, IsNotSuddenWhileASaveRuns) {
  DrawingLocks locks(computer.locks);
  auto held = locks.lock(std::chrono::milliseconds(0));
  ASSERT_NE(held, nullptr);
  EXPECT_EQ(disabled, 1);
  EXPECT_EQ(locks.lock(std::chrono::milliseconds(0)), nullptr);
  EXPECT_EQ(disabled, 1) << "a lock that was not got holds nothing";
  held.reset();
  EXPECT_EQ(disabled, 0);
}

}  // namespace
}  // namespace norvik::prefpane
