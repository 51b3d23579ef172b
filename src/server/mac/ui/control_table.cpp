// The table of the controls.
#include "src/server/mac/ui/control_table.h"

#include <cstddef>
#include <iterator>

#include "src/server/mac/pane/member_name.h"
#include "src/server/mac/ui/actions.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;
using namespace actions;

constexpr ControlAction kNoAction = nullptr;

template <auto member>
Control& controlIn(P& pane) {
  return pane.*member;
}

template <auto member>
constexpr ControlRow row(unsigned conditions, ControlAction action) {
  return {memberName<member>(), controlIn<member>, conditions, action};
}

// The clipboard box of RDP intentionally follows the switch of NVK, not its own.
// clang-format off
constexpr ControlRow kControls[] = {
    //  outlet                               enabled when                           a click
    row<&P::ib_user_chkbox_imgDefs>          (kEnabled,                             followImageDefaults),
    row<&P::ib_user_slider_imgDept>          (kOwnImage,                            edit),
    row<&P::ib_user_popup_imgMode>           (kOwnImage,                            edit),
    row<&P::ib_user_slider_imgCapt>          (kOwnImage,                            edit),
    row<&P::ib_user_slider_imgBuff>          (kOwnImage,                            edit),
    row<&P::ib_user_slider_imgShad>          (kOwnImage,                            edit),
    row<&P::ib_user_chkbox_mseSwap>          (kNotTouched,                          edit),

    row<&P::ib_admin_chkbox_multiUser>       (kUnlocked | kMultiUserKnown,          clickSessionMode),
    row<&P::ib_admin_button_svrStart>        (kUnlocked,                            clickStart),
    row<&P::ib_admin_button_svrRestart>      (kUnlocked | kRunning,                 clickRestart),
    row<&P::ib_admin_label_svrState>         (kNotTouched,                          kNoAction),
    row<&P::ib_admin_label_svrDesc>          (kNotTouched,                          kNoAction),
    row<&P::ib_admin_chkbox_actOnLogin>      (kUnlocked,                            clickSessionMode),
    row<&P::ib_admin_rbutton_toHidden>       (kUnlocked | kActs,                    clickActionOnConnect),
    row<&P::ib_admin_rbutton_lockScreen>     (kUnlocked | kActs | kSingleUser,      clickActionOnConnect),
    row<&P::ib_admin_rbutton_toConsole>      (kUnlocked | kActs | kSingleUser,      clickActionOnConnect),
    row<&P::ib_admin_popup_gldMode>          (kNotTouched,                          chooseDriverMode),
    row<&P::ib_admin_label_gldMode>          (kNotTouched,                          kNoAction),

    row<&P::ib_admin_chkbox_nvkEnabled>      (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_nvkPort>         (kUnlocked | kNvk,                     clickNvkPort),
    row<&P::ib_admin_edbox_nvkPort>          (kUnlocked | kNvk | kNvkPort,          kNoAction),
    row<&P::ib_admin_chkbox_nvkClipb>        (kUnlocked | kNvk,                     edit),
    row<&P::ib_admin_chkbox_nvkSound>        (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_nvkPrint>        (kUnlocked,                            edit),
    row<&P::ib_admin_label_nvkAddress>       (kNotTouched,                          kNoAction),

    row<&P::ib_admin_chkbox_rdpEnabled>      (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_rdpPort>         (kUnlocked | kRdp,                     clickRdpPort),
    row<&P::ib_admin_edbox_rdpPort>          (kUnlocked | kRdp | kRdpPort,          kNoAction),
    row<&P::ib_admin_chkbox_rdpClipb>        (kUnlocked | kNvk,                     edit),
    row<&P::ib_admin_chkbox_rdpSound>        (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_rdpPrint>        (kUnlocked,                            edit),
    row<&P::ib_admin_label_rdpAddress>       (kNotTouched,                          kNoAction),

    row<&P::ib_admin_slider_imgDept>         (kUnlocked,                            changeImageDefaults),
    row<&P::ib_admin_popup_imgMode>          (kUnlocked,                            changeImageDefaults),
    row<&P::ib_admin_slider_imgCapt>         (kUnlocked,                            changeImageDefaults),
    row<&P::ib_admin_slider_imgBuff>         (kUnlocked,                            changeImageDefaults),
    row<&P::ib_admin_slider_imgShad>         (kUnlocked,                            changeImageDefaults),

    row<&P::ib_admin_edbox_maxFSoft>         (kNotTouched,                          kNoAction),
    row<&P::ib_admin_edbox_maxFHard>         (kNotTouched,                          kNoAction),
    row<&P::ib_admin_button_maxFAdjust>      (kUnlocked | kLimitKnown,              clickAdjust),
    row<&P::ib_admin_chkbox_wakeUp>          (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_scrSaver>        (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_noQuartz>        (kUnlocked,                            clickNoQuartz),
    row<&P::ib_admin_button_dispManager>     (kUnlocked,                            clickDisplays),
    row<&P::ib_admin_button_accManager>      (kUnlocked,                            clickAccess),

    row<&P::ib_admin_chkbox_ntfShowNews>     (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_ntfShowNotices>  (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_ntfShowUpdates>  (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_ntfShowWarnings> (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_ntfPrLow>        (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_ntfPrMedium>     (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_ntfPrHigh>       (kUnlocked,                            edit),
    row<&P::ib_admin_popup_ntfRepeat>        (kUnlocked,                            edit),
    row<&P::ib_admin_popup_ntfClose>         (kUnlocked,                            edit),
    row<&P::ib_admin_popup_ntfShow>          (kUnlocked,                            edit),
    row<&P::ib_admin_chkbox_testIntNotif>    (kNotTouched,                          kNoAction),
    row<&P::ib_admin_chkbox_debug>           (kNotTouched,                          kNoAction),

    row<&P::ib_button_Apply>                 (kEnabled | kPending,                  clickApply),
    row<&P::ib_button_Help>                  (kNotTouched,                          clickHelp),
    row<&P::ib_button_Auth>                  (kNotTouched,                          clickLock),
    row<&P::ib_label_Auth>                   (kNotTouched,                          kNoAction),
    row<&P::ib_oview_confBar>                (kNotTouched,                          kNoAction),
    row<&P::ib_tview_confView>               (kNotTouched,                          kNoAction),
};
// clang-format on

// A member has one row. That it has a row at all is what tests/server/ui/control_table_test.cpp counts.
constexpr bool eachOnce() {
  for (std::size_t i = 0; i < std::size(kControls); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (kControls[i].outlet == kControls[j].outlet) return false;
    }
  }
  return true;
}
static_assert(eachOnce(), "a control has two rows");
static_assert(kControls[0].outlet == "ib_user_chkbox_imgDefs", "this compiler writes members another way");

}  // namespace

std::span<const ControlRow> controlTable() {
  return kControls;
}

}  // namespace norvik
