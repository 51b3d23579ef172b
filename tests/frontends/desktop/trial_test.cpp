// Changes and stops on trial: the countdown, keeping, and every way in which they are taken back. No test
// waits: the simulated clock is set forward and the timer's step is taken by hand.
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "src/frontends/desktop/changes_dialog.h"
#include "src/frontends/desktop/more_menu.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class TrialInWindow : public SimulatedPanel {
 protected:
  void tryPort() {
    openEverything();
    panel.choosePage("admin", "Norvik clients");
    panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
    panel.trial->apply();
    panel.settle();
  }
  void pass(int seconds) {
    desktop.computer.clock.sleep(static_cast<uint32_t>(seconds) * 1'000'000);
    panel.trial->tick();
    panel.settle();
  }
  MessageLine& line() { return panel.window.messages().line(MessageSubject::trial); }
  std::string said() { return line().message().sentence; }
  QPushButton* button(MessageAction action) {
    for (auto* candidate : line().findChildren<QPushButton*>()) {
      if (candidate->accessibleName() == text(titleOf(action))) return candidate;
    }
    return nullptr;
  }
  bool hasFile() { return !desktop.computer.userState.read(kTrialFile).bytes.empty(); }
};

TEST_F(TrialInWindow, CountsDownAndIsKept) {
  tryPort();
  ASSERT_EQ(pane.m_admin_nvkPort, 5000);
  ASSERT_TRUE(panel.trial->isUnderWay());
  EXPECT_TRUE(hasFile());
  EXPECT_FALSE(panel.widget("ib_button_Auth")->isEnabled()) << "taking back needs the lock open";
  const QString spoken = line().accessibleName();
  EXPECT_TRUE(spoken.contains(QStringLiteral("60 seconds"))) << spoken.toStdString();
  pass(18);
  EXPECT_EQ(said(), "On trial: taken back in 42 s unless you keep it.");
  EXPECT_EQ(line().accessibleName(), spoken) << "not said each second";
  QTest::mouseClick(button(MessageAction::keep), Qt::LeftButton);
  panel.settle();
  EXPECT_EQ(said(), "The change on trial is kept.");
  EXPECT_FALSE(hasFile());
  EXPECT_TRUE(panel.widget("ib_button_Auth")->isEnabled());
  pass(100);
  EXPECT_EQ(pane.m_admin_nvkPort, 5000);
}

TEST_F(TrialInWindow, IsTakenBackWhenTheTimeHasPassed) {
  tryPort();
  panel.click("ib_admin_chkbox_nvkSound");  // edited meanwhile
  pass(59);
  EXPECT_EQ(pane.m_admin_nvkPort, 5000);
  pass(1);
  EXPECT_FALSE(panel.trial->isUnderWay());
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
  EXPECT_EQ(pane.m_admin_nvkSound, 0) << "not applied";
  ASSERT_EQ(panel.change.pending().size(), 1u);
  EXPECT_EQ(panel.change.pending()[0].name, "nvk.sound");
  EXPECT_EQ(said(), "The change on trial is taken back, as the time has passed.");
  EXPECT_FALSE(hasFile());
}

TEST_F(TrialInWindow, AQuestionDoesNotKeepItInForce) {
  tryPort();
  ChangesDialog list(&panel.window, {[this] { return panel.change.preview(); }, {}, {}});
  list.open();
  panel.settle();
  pass(60);
  EXPECT_FALSE(list.isVisible());
  pass(1);
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
}

TEST_F(TrialInWindow, IsTakenBackByItsButton) {
  tryPort();
  QTest::mouseClick(button(MessageAction::revert), Qt::LeftButton);
  panel.settle();
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
  EXPECT_EQ(said(), "The change on trial is taken back.");
}

TEST_F(TrialInWindow, ClosingTheWindowAsks) {
  tryPort();
  {
    Answers answers(QStringLiteral("Cancel"));
    panel.window.close();
    EXPECT_EQ(answers.seen.size(), 1u);
  }
  EXPECT_TRUE(panel.window.isVisible());
  EXPECT_TRUE(panel.trial->isUnderWay());
  Answers answers(QStringLiteral("Revert"));
  panel.window.close();
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
  EXPECT_FALSE(panel.window.isVisible());
  EXPECT_FALSE(hasFile());
}

TEST_F(TrialInWindow, IsOfferedWhereTheChangeMayEndConnections) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  const auto isOffered = [this] {
    ChangesDialog list(&panel.window,
                       {[this] { return panel.change.preview(); }, {}, {}, panel.changes->isTrialOffered});
    list.show();
    const bool offered = list.findChild<QPushButton*>(QStringLiteral("changesApplyOnTrial"))->isVisible();
    list.hide();
    return offered;
  };
  panel.click("ib_admin_chkbox_nvkSound");
  EXPECT_FALSE(isOffered());
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
  EXPECT_TRUE(isOffered());
  panel.trial->apply();
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5001"));
  EXPECT_FALSE(isOffered()) << "one at a time";
}

TEST_F(TrialInWindow, WhatCannotBeAppliedIsNotTried) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("70000"));
  panel.trial->apply();
  EXPECT_FALSE(panel.trial->isUnderWay());
  EXPECT_FALSE(hasFile());
}

TEST_F(TrialInWindow, AStopIsTakenBackByAStart) {
  openEverything();
  Answers answers(QStringLiteral("Stop"));
  panel.trial->stop();
  panel.settle();
  ASSERT_TRUE(panel.trial->isUnderWay());
  EXPECT_EQ(pane.m_serverPid, -1);
  pass(60);
  EXPECT_GT(pane.m_serverPid, 0);
  EXPECT_FALSE(hasFile());
}

class LeftTrial : public TrialInWindow {
 protected:
  // As a program leaves it that was killed while its change was in force.
  LeftTrial() {
    openEverything();
    panel.choosePage("admin", "Norvik clients");
    panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
    Trials killed(desktop.computer.userState, "norvikctl");
    EXPECT_FALSE(killed.begin(recordedOf(pane, panel.change.pending()), StopsServer::no, kUsualTrial));
    panel.click("ib_button_Apply");
    EXPECT_EQ(pane.m_admin_nvkPort, 5000);
  }
};

TEST_F(LeftTrial, IsTakenBackAtTheStart) {
  panel.trial->takeBackAbandoned();
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
  EXPECT_EQ(said(), "A change was on trial when its program ended, and is taken back now.");
  EXPECT_FALSE(hasFile());
}

TEST_F(LeftTrial, WithoutRightsStaysAndIsSaid) {
  panel.click("ib_button_Auth");
  ASSERT_FALSE(pane.authorized());
  desktop.computer.authorization.setInteractiveGranted(false);
  panel.trial->takeBackAbandoned();
  EXPECT_EQ(said(), "A change was on trial when its program ended, and is still in force.");
  EXPECT_TRUE(hasFile());
  desktop.computer.authorization.setInteractiveGranted(true);
  QTest::mouseClick(button(MessageAction::revert), Qt::LeftButton);
  panel.settle();
  EXPECT_EQ(pane.m_admin_nvkPort, 4074);
  EXPECT_FALSE(hasFile());
}

TEST_F(LeftTrial, MayBeKept) {
  panel.click("ib_button_Auth");
  desktop.computer.authorization.setInteractiveGranted(false);
  panel.trial->takeBackAbandoned();
  QTest::mouseClick(button(MessageAction::keep), Qt::LeftButton);
  EXPECT_FALSE(hasFile());
  EXPECT_EQ(pane.m_admin_nvkPort, 5000);
}

}  // namespace
}  // namespace norvik::desktop
