// The control table against the pane that it describes: every control has its row, and the rows are worked
// through from top to bottom.
#include "src/server/mac/ui/control_table.h"

#include <cstdint>
#include <cstring>
#include <set>

#include "tests/server/pane_fixture.h"

namespace norvik {
namespace {

using ControlTableTest = PaneTest;

// The first word of a control, by which its class is known: that of its virtual functions.
std::uintptr_t firstWord(const void* object) {
  std::uintptr_t word = 0;
  std::memcpy(&word, object, sizeof word);
  return word;
}

// Counts the controls that lie in the pane's memory, named in the table or not.
TEST_F(ControlTableTest, EveryControlThatThePaneHoldsHasARow) {
  NVKServerPrefs pane(interface);
  std::set<std::uintptr_t> classes;
  std::set<const void*> rows;
  for (const ControlRow& row : controlTable()) {
    Control& control = row.control(pane);
    classes.insert(firstWord(&control));
    rows.insert(&control);
  }
  EXPECT_EQ(classes.size(), 4u);  // a plain control, the lock, the sidebar, the tab view
  EXPECT_EQ(rows.size(), controlTable().size());
  const auto* begin = reinterpret_cast<const unsigned char*>(&pane);
  for (std::size_t at = 0; at < sizeof pane; at += alignof(Control)) {
    if (classes.contains(firstWord(begin + at))) {
      EXPECT_TRUE(rows.contains(begin + at)) << "a control without a row, " << at << " bytes into the pane";
    }
  }
}

struct Changes : ControlObserver {
  std::vector<std::string> names;
  void controlChanged(Control& control) override { names.emplace_back(control.name()); }
};

TEST_F(ControlTableTest, TheControlsAreDisabledInTheOrderOfTheRows) {
  const std::vector<std::string> order{
      "ib_user_chkbox_imgDefs",
      "ib_user_slider_imgDept",
      "ib_user_popup_imgMode",
      "ib_user_slider_imgCapt",
      "ib_user_slider_imgBuff",
      "ib_user_slider_imgShad",
      "ib_admin_chkbox_multiUser",
      "ib_admin_button_svrStart",
      "ib_admin_button_svrRestart",
      "ib_admin_chkbox_actOnLogin",
      "ib_admin_rbutton_toHidden",
      "ib_admin_rbutton_lockScreen",
      "ib_admin_rbutton_toConsole",
      "ib_admin_chkbox_nvkEnabled",
      "ib_admin_chkbox_nvkPort",
      "ib_admin_edbox_nvkPort",
      "ib_admin_chkbox_nvkClipb",
      "ib_admin_chkbox_nvkSound",
      "ib_admin_chkbox_nvkPrint",
      "ib_admin_chkbox_rdpEnabled",
      "ib_admin_chkbox_rdpPort",
      "ib_admin_edbox_rdpPort",
      "ib_admin_chkbox_rdpClipb",
      "ib_admin_chkbox_rdpSound",
      "ib_admin_chkbox_rdpPrint",
      "ib_admin_slider_imgDept",
      "ib_admin_popup_imgMode",
      "ib_admin_slider_imgCapt",
      "ib_admin_slider_imgBuff",
      "ib_admin_slider_imgShad",
      "ib_admin_button_maxFAdjust",
      "ib_admin_chkbox_wakeUp",
      "ib_admin_chkbox_scrSaver",
      "ib_admin_chkbox_noQuartz",
      "ib_admin_button_dispManager",
      "ib_admin_button_accManager",
      "ib_admin_chkbox_ntfShowNews",
      "ib_admin_chkbox_ntfShowNotices",
      "ib_admin_chkbox_ntfShowUpdates",
      "ib_admin_chkbox_ntfShowWarnings",
      "ib_admin_chkbox_ntfPrLow",
      "ib_admin_chkbox_ntfPrMedium",
      "ib_admin_chkbox_ntfPrHigh",
      "ib_admin_popup_ntfRepeat",
      "ib_admin_popup_ntfClose",
      "ib_admin_popup_ntfShow",
      "ib_button_Apply",
  };
  NVKServerPrefs pane(interface);
  Changes changes;
  for (Control* control : pane.outlets()) control->setObserver(&changes);
  pane.enableGui(false, false);
  EXPECT_EQ(changes.names, order);
}

TEST_F(ControlTableTest, AControlIsFoundByTheNameOfItsMember) {
  NVKServerPrefs pane(interface);
  EXPECT_EQ(pane.outlet("ib_admin_edbox_nvkPort"), &pane.ib_admin_edbox_nvkPort);
  EXPECT_EQ(pane.outlet("ib_button_Auth"), &pane.ib_button_Auth);
  EXPECT_EQ(pane.outlet("ib_tview_confView"), &pane.ib_tview_confView);
}

}  // namespace
}  // namespace norvik
