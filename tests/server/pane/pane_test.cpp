// The pane object where a scenario cannot look: its outlets, objects that are gone, what front ends show
// beside a control, and a computer that lacks something.
#include "src/server/mac/pane/pane.h"

#include <set>

#include "tests/server/pane_fixture.h"

namespace norvik {
namespace {

TEST_F(PaneTest, EveryControlOfTheShippedInterfaceIsAnOutletAndTheOtherWayRound) {
  NVKServerPrefs pane(interface);
  std::set<std::string> outlets, described;
  for (const Control* control : pane.outlets()) outlets.emplace(control->name());
  for (const ControlDescription* control : interface.controls()) described.insert(control->outlet);
  EXPECT_EQ(outlets, described);
  EXPECT_EQ(outlets.size(), pane.outlets().size());
  for (Control* control : pane.outlets()) EXPECT_EQ(pane.outlet(control->name()), control);
  EXPECT_EQ(pane.outlet("ib_admin_chkbox_unknown"), nullptr);
}

TEST_F(PaneTest, AnInterfaceWithoutControlsMakesAPaneThatStillWakes) {
  NVKServerPrefs pane{InterfaceDescription()};
  pane.awakeFromNib();
  EXPECT_EQ(__main_pane, &pane);
  EXPECT_EQ(pane.ib_tview_confView.selectedItem(), nullptr);
  EXPECT_EQ(pane.ib_oview_confBar.rows().size(), 2u);
  EXPECT_TRUE(pane.mainView().subviews().empty());
}

TEST_F(PaneTest, ADescribedControlThatThePaneDoesNotKnowIsLeftOut) {
  interface.frame.emplace_back().outlet = "ib_button_Other";
  NVKServerPrefs pane(interface);
  EXPECT_EQ(pane.outlet("ib_button_Other"), nullptr);
  EXPECT_EQ(pane.mainView().subviews().size(), interface.frame.size() - 1);
}

TEST_F(PaneTest, TheNewestObjectIsKeptWhileTheFirstStaysTheMainOne) {
  NVKServerPrefs first(interface);
  NVKServerPrefs second(interface);
  first.awakeFromNib();
  second.awakeFromNib();
  EXPECT_EQ(__gc_keeper, &second);
  EXPECT_EQ(__main_pane, &first);
}

TEST_F(PaneTest, TheActivationNotificationNeverReachesAnObjectThatIsGone) {
  {
    NVKServerPrefs pane(interface);
    pane.awakeFromNib();
    EXPECT_FALSE(computer.application.observer.expired());
    pane.destroy();
    EXPECT_FALSE(computer.application.observer.expired());  // destroy leaves it registered
  }
  EXPECT_TRUE(computer.application.observer.expired());
}

TEST_F(PaneTest, AResizeThatComesAfterTheObjectIsGoneDoesNothing) {
  computer.application.window.reset();
  {
    NVKServerPrefs pane(interface);
    pane.resizeFrame();
  }
  ASSERT_TRUE(computer.application.later);
  computer.application.window = Rect{0, 0, 300, 300};
  computer.application.later();
}

TEST_F(PaneTest, AResizeThatComesLaterFitsTheView) {
  computer.application.window.reset();
  NVKServerPrefs pane(interface);
  pane.mainView().setFrame({5, 6, 7, 8});
  pane.resizeFrame();
  ASSERT_TRUE(computer.application.later);
  EXPECT_EQ(pane.mainView().frame(), (Rect{5, 6, 7, 8}));
  computer.application.window = Rect{0, 0, 300, 400};
  computer.application.later();
  EXPECT_EQ(pane.mainView().frame(), (Rect{0, 6, 300, 8}));
}

TEST_F(PaneTest, WithoutATimerThePaneWorksAndCanBeDestroyed) {
  computer.runLoop.makesTimers = false;
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  EXPECT_EQ(pane.m_uiTimer, nullptr);
  pane.destroy();
}

TEST_F(PaneTest, ATimerWithoutAPaneDoesNothing) {
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  computer.files.pidFile = "4321\n";
  stateTimerProc(pane.m_uiTimer, nullptr);
  EXPECT_EQ(pane.m_serverPid, -1);
  stateTimerProc(pane.m_uiTimer, &pane);
  EXPECT_EQ(pane.m_serverPid, 4321);
}

TEST_F(PaneTest, ThatIsSelectedBeforeItWakesFitsItsViewAlone) {
  NVKServerPrefs pane(interface);
  pane.mainView().setFrame({5, 6, 7, 8});
  pane.willSelect();
  EXPECT_EQ(pane.mainView().frame(), (Rect{0, 6, 800, 8}));
  EXPECT_EQ(__main_pane, nullptr);
}

TEST_F(PaneTest, WakingAgainMakesNoSecondTimer) {
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  const auto timer = pane.m_uiTimer;
  computer.runLoop.makesTimers = false;
  __main_pane = nullptr;
  pane.awakeFromNib();
  EXPECT_EQ(pane.m_uiTimer, timer);
}

TEST_F(PaneTest, ATickRefreshesNothingWhileTheStateIsNotTracked) {
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  computer.files.pidFile = "4321\n";
  pane.m_trackState = false;
  pane.onStateTimer();
  EXPECT_EQ(pane.m_serverPid, -1);
  EXPECT_EQ(pane.ib_admin_label_svrState.stringValue(), "Stopped");
}

TEST_F(PaneTest, WithoutAReferenceNoGrantUnlocksThePane) {
  computer.authorization.makesReferences = false;
  computer.authorization.grants = true;
  NVKServerPrefs pane(interface);
  EXPECT_FALSE(pane.authorize(true, false));
  EXPECT_FALSE(pane.authorized());
}

TEST_F(PaneTest, APidFileThatCannotBeSoughtBackNamesNoDaemon) {
  computer.files.pidFile = "4321\n";
  EXPECT_EQ(nvkd_pid(), 4321);
  computer.files.rewinds = false;
  EXPECT_EQ(nvkd_pid(), -1);
}

TEST_F(PaneTest, TheServerIsChangingFromTheBeginningOfAStartToTheRefreshThatFollows) {
  NVKServerPrefs pane(interface);
  EXPECT_FALSE(pane.isServerChanging());
  pane.awakeFromNib();
  EXPECT_FALSE(pane.startServer());
  EXPECT_FALSE(pane.isServerChanging());  // locked, so nothing begins
  computer.authorization.grants = true;
  pane.authorize(true, false);
  int sleeps = 0;
  computer.files.whileAsleep = [&] {
    ++sleeps;
    EXPECT_TRUE(pane.isServerChanging());
    // An event that refreshes while the run loop is pumped does not end the change.
    if (!pane.m_trackState) pane.updateGui(false, false);
  };
  pane.startServer();
  EXPECT_GT(sleeps, 0);
  EXPECT_TRUE(pane.isServerChanging());
  pane.updateGui(true, false);
  EXPECT_FALSE(pane.isServerChanging());
}

TEST_F(PaneTest, APidFileWithoutANumberIsARunningServerThatIsNotChanging) {
  computer.files.pidFile = "none\n";
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  pane.onStateTimer();  // a full refresh, whatever pane was refreshed last in this process
  EXPECT_EQ(pane.m_serverPid, 0);
  EXPECT_EQ(pane.ib_admin_label_svrState.stringValue(), "Started");
  EXPECT_FALSE(pane.isServerChanging());
}

TEST_F(PaneTest, DrawingNoViewDoesNothing) {
  NVKServerPrefs pane(interface);
  EXPECT_NO_THROW(pane.redrawView(nullptr));
}

struct SettingMarksTest : PaneTest {
  NVKServerPrefs pane{interface};
  SettingMarksTest() { pane.awakeFromNib(); }
  void unlock() {
    computer.authorization.grants = true;
    pane.authorize(true, false);
  }
};

TEST_F(SettingMarksTest, AnAdministratorsEditCountsWhileUnlocked) {
  for (Control* control : {&pane.ib_admin_slider_imgDept, &pane.ib_admin_popup_ntfShow}) {
    control->setIntegerValue(1000);
    EXPECT_FALSE(pane.differsFromStored(*control)) << control->name();
  }
  unlock();
  EXPECT_TRUE(pane.differsFromStored(pane.ib_admin_slider_imgDept));
  EXPECT_TRUE(pane.differsFromStored(pane.ib_admin_popup_ntfShow));
  EXPECT_FALSE(pane.differsFromStored(pane.ib_admin_slider_imgShad));
}

TEST_F(SettingMarksTest, EveryControlOfASettingIsMarked) {
  unlock();
  pane.ib_admin_chkbox_nvkPort.setState(kOnState);
  pane.ib_admin_edbox_nvkPort.setStringValue("5000");
  EXPECT_TRUE(pane.differsFromStored(pane.ib_admin_chkbox_nvkPort));
  EXPECT_TRUE(pane.differsFromStored(pane.ib_admin_edbox_nvkPort));
  pane.ib_admin_chkbox_actOnLogin.setState(kOffState);
  EXPECT_TRUE(pane.differsFromStored(pane.ib_admin_rbutton_toHidden));
}

TEST_F(SettingMarksTest, AUsersImageValuesCountWhileTheyDoNotFollowTheServer) {
  pane.ib_user_slider_imgDept.setDoubleValue(8);
  EXPECT_FALSE(pane.differsFromStored(pane.ib_user_slider_imgDept));
  pane.ib_user_chkbox_imgDefs.setState(kOffState);
  EXPECT_TRUE(pane.differsFromStored(pane.ib_user_slider_imgDept));
  EXPECT_TRUE(pane.differsFromStored(pane.ib_user_chkbox_imgDefs));
  EXPECT_FALSE(pane.differsFromStored(pane.ib_user_chkbox_mseSwap));
}

TEST_F(SettingMarksTest, APendingOpenFilesLimitMarksItsThreeControls) {
  pane.m_admin_maxFiles.action = kLimitRevert;
  const Control* const controls[] = {&pane.ib_admin_edbox_maxFSoft, &pane.ib_admin_edbox_maxFHard,
                                     &pane.ib_admin_button_maxFAdjust};
  for (const Control* control : controls) EXPECT_FALSE(pane.differsFromStored(*control)) << control->name();
  unlock();
  for (const Control* control : controls) EXPECT_FALSE(pane.differsFromStored(*control)) << control->name();
  pane.m_admin_maxFiles.action = kLimitRevert;
  for (const Control* control : controls) EXPECT_TRUE(pane.differsFromStored(*control)) << control->name();
}

TEST_F(SettingMarksTest, TheDefaultIsWhatAMissingKeyMeans) {
  // There was no file, so everything is at its default.
  for (const Control* control : pane.outlets())
    EXPECT_FALSE(pane.differsFromDefault(*control)) << control->name();
  pane.ib_admin_slider_imgDept.setDoubleValue(7);
  pane.m_admin_imgDept = 7;
  unlock();
  EXPECT_TRUE(pane.differsFromDefault(pane.ib_admin_slider_imgDept));
  EXPECT_FALSE(pane.differsFromStored(pane.ib_admin_slider_imgDept));
}

TEST_F(SettingMarksTest, ControlsOfNoSettingAreNeverMarked) {
  unlock();
  pane.ib_label_Auth.setStringValue("anything");
  EXPECT_FALSE(pane.differsFromStored(pane.ib_label_Auth));
  EXPECT_FALSE(pane.differsFromDefault(pane.ib_label_Auth));
}

TEST(PlatformDeathTest, AskingForAComputerBeforeOneIsInstalledEndsTheProgram) {
  EXPECT_DEATH(platform(), "");
}

}  // namespace
}  // namespace norvik
