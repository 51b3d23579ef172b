// A trial that its program did not survive: taken back a moment after the pane is shown, and said.
#include "src/frontends/shared/trial/trial.h"

#include "src/frontends/shared/trial/countdown.h"

#import "tests/frontends/prefpane/simulated_pane.h"

namespace norvik::prefpane {
namespace {

constexpr int64_t kBefore = 4074, kTried = 5000;

class LeftTrialInPane : public SimulatedPane {
 protected:
  // As a program leaves it that was killed while its change of the port was in force.
  LeftTrialInPane() {
    computer.service.setDaemon(77);
    Trials killed(computer.userState, "norvikctl");
    EXPECT_FALSE(killed.begin({{"nvk.port", kBefore, kTried}}, StopsServer::no, kUsualTrial));
    saveElsewhere(kTried, false);
  }
  void show() {
    open();
    run(0.1);  // the moment later
  }
  bool isLeft() { return computer.userState.read(kTrialFile).kind != FileKind::missing; }
  const std::string& said() { return messages().message(MessageSubject::trial).sentence; }
};

TEST_F(LeftTrialInPane, IsTakenBackOnceThePaneIsShown) {
  open();
  EXPECT_EQ(pane().m_admin_nvkPort, kTried) << "not before the host's window is there";
  run(0.1);
  EXPECT_TRUE(pane().authorized()) << "the lock was asked for";
  EXPECT_EQ(pane().m_admin_nvkPort, kBefore);
  EXPECT_NE(stored().find("<integer>4074</integer>"), std::string::npos);
  EXPECT_EQ(read(),
            "Done: A change was on trial when its program ended, and was taken back: Port number (Norvik "
            "clients).");
  EXPECT_FALSE(isLeft());
}

TEST_F(LeftTrialInPane, WhatSomebodyElseChangedSinceIsNamedAndStays) {
  saveElsewhere(6000, false);
  show();
  EXPECT_EQ(pane().m_admin_nvkPort, 6000);
  EXPECT_NE(stored().find("<integer>6000</integer>"), std::string::npos);
  EXPECT_NE(said().find("stays 6000, as it was changed again since: the change had made it 5000."),
            std::string::npos)
      << said();
  EXPECT_FALSE(isLeft());
}

TEST_F(LeftTrialInPane, WithoutRightsItStaysUntilAPersonTakesItBackOrKeepsIt) {
  computer.authorization.setInteractiveGranted(false);
  show();
  EXPECT_EQ(pane().m_admin_nvkPort, kTried);
  EXPECT_TRUE(said().starts_with("A change was on trial when its program ended, and is still in force: "))
      << said();
  EXPECT_TRUE(isLeft());
  press("ib_user_chkbox_mseSwap");  // an edit meanwhile
  computer.authorization.setInteractiveGranted(true);
  pressButton(MessageAction::revert);
  EXPECT_EQ(pane().m_admin_nvkPort, kBefore);
  EXPECT_TRUE(pane().ib_user_chkbox_mseSwap.isOn()) << "the edit is put aside, and back";
  EXPECT_NE(buttonWith("1 change"), (NSButton*)nil) << "and not applied";
  EXPECT_FALSE(isLeft());
}

TEST_F(LeftTrialInPane, MayBeKept) {
  computer.authorization.setInteractiveGranted(false);
  show();
  pressButton(MessageAction::keep);
  EXPECT_EQ(said(), "The change on trial is kept.");
  EXPECT_EQ(pane().m_admin_nvkPort, kTried);
  EXPECT_FALSE(isLeft());
}

TEST_F(LeftTrialInPane, ARecordThatCannotBeReadIsAWarning) {
  computer.fileSystem.put(computer.userState.placeOf(kTrialFile), "{");
  show();
  EXPECT_TRUE(read().starts_with("Warning: ")) << read();
  EXPECT_NE(said().find("is no record of a change on trial"), std::string::npos) << said();
  EXPECT_EQ(pane().m_admin_nvkPort, kTried);
}

}  // namespace
}  // namespace norvik::prefpane
