// The state timer ticks four times a second for as long as the pane exists. A tick that has nothing new to
// show must allocate nothing, throw nothing and notify no front end of a change.
#include "tests/server/change_counter.h"
#include "tests/server/pane_fixture.h"
#include "tests/support/allocation_count.h"

namespace norvik {
namespace {

void leaveAsItIs(StubComputer&, NVKServerPrefs&) {}

void run(StubComputer& computer, NVKServerPrefs&) {
  computer.files.pidFile = "4321\n";
}

void unlock(StubComputer& computer, NVKServerPrefs& pane) {
  computer.authorization.grants = true;
  pane.authorize(true, false);
}

// A change in every group, and both services on ports of their own.
void edit(StubComputer& computer, NVKServerPrefs& pane) {
  run(computer, pane);
  unlock(computer, pane);
  pane.ib_admin_chkbox_nvkPort.setState(kOnState);
  pane.ib_admin_edbox_nvkPort.setStringValue("5000");
  pane.ib_admin_chkbox_rdpPort.setState(kOnState);
  pane.ib_admin_edbox_rdpPort.setStringValue("5001");
  pane.ib_user_chkbox_imgDefs.setState(kOffState);
  pane.ib_user_slider_imgDept.setDoubleValue(7.5);
  pane.ib_admin_chkbox_multiUser.setState(kOnState);
  pane.ib_admin_chkbox_ntfShowNews.setState(kOffState);
}

// Only the last row of each table differs, so that each comparison goes to the end.
void editLast(StubComputer& computer, NVKServerPrefs& pane) {
  unlock(computer, pane);
  pane.ib_user_chkbox_imgDefs.setState(kOffState);
  pane.m_user_imgDefs = 0;
  pane.ib_admin_popup_ntfShow.selectItemAtIndex(0);
}

struct State {
  const char* name;
  void (*bring)(StubComputer& computer, NVKServerPrefs& pane);
};

void PrintTo(const State& state, std::ostream* out) {
  *out << state.name;
}

struct TickTest : PaneTest, testing::WithParamInterface<State> {
  void tick() const { computer.runLoop.callback(nullptr, computer.runLoop.context.info); }
};

TEST_P(TickTest, WithNothingNewAllocatesNothingAndTellsNobody) {
  ChangeCounter count;  // outlives the pane, which notifies it at its end
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  GetParam().bring(computer, pane);
  tick();  // shows what is new
  for (Control* control : pane.outlets()) control->setObserver(&count);
  const long before = allocationCount();
  EXPECT_NO_THROW(tick());
  EXPECT_EQ(allocationCount() - before, 0);
  EXPECT_EQ(count.changes, 0);
}

INSTANTIATE_TEST_SUITE_P(States, TickTest,
                         testing::Values(State{"LockedAndStopped", leaveAsItIs}, State{"Running", run},
                                         State{"Unlocked", unlock}, State{"Edited", edit},
                                         State{"EditedInTheLastRow", editLast}),
                         [](const auto& state) { return state.param.name; });

TEST_F(PaneTest, ATickWithSomethingNewShowsIt) {
  ChangeCounter count;  // outlives the pane, which notifies it at its end
  NVKServerPrefs pane(interface);
  pane.awakeFromNib();
  for (Control* control : pane.outlets()) control->setObserver(&count);
  computer.files.pidFile = "4321\n";
  const long before = allocationCount();
  pane.onStateTimer();
  EXPECT_GT(allocationCount(), before);
  EXPECT_GT(count.changes, 0);
  EXPECT_EQ(pane.m_serverPid, 4321);
}

}  // namespace
}  // namespace norvik
