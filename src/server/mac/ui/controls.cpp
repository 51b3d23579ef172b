// Every outlet by its name, and how an interface description becomes the controls of a pane.
#include <string_view>
#include <utility>

#include "src/server/mac/pane/pane.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

struct Outlet {
  std::string_view name;
  Control P::*control;
};

// The lock button, the sidebar and the tab view are of kinds of their own and stand apart.
// clang-format off
constexpr Outlet kOutlets[] = {
    {"ib_button_Apply",                 &P::ib_button_Apply},
    {"ib_button_Help",                  &P::ib_button_Help},
    {"ib_label_Auth",                   &P::ib_label_Auth},
    {"ib_user_chkbox_imgDefs",          &P::ib_user_chkbox_imgDefs},
    {"ib_user_popup_imgMode",           &P::ib_user_popup_imgMode},
    {"ib_user_slider_imgDept",          &P::ib_user_slider_imgDept},
    {"ib_user_slider_imgCapt",          &P::ib_user_slider_imgCapt},
    {"ib_user_slider_imgBuff",          &P::ib_user_slider_imgBuff},
    {"ib_user_slider_imgShad",          &P::ib_user_slider_imgShad},
    {"ib_user_chkbox_mseSwap",          &P::ib_user_chkbox_mseSwap},
    {"ib_admin_chkbox_nvkEnabled",      &P::ib_admin_chkbox_nvkEnabled},
    {"ib_admin_chkbox_nvkPort",         &P::ib_admin_chkbox_nvkPort},
    {"ib_admin_edbox_nvkPort",          &P::ib_admin_edbox_nvkPort},
    {"ib_admin_chkbox_nvkSound",        &P::ib_admin_chkbox_nvkSound},
    {"ib_admin_chkbox_nvkPrint",        &P::ib_admin_chkbox_nvkPrint},
    {"ib_admin_chkbox_nvkClipb",        &P::ib_admin_chkbox_nvkClipb},
    {"ib_admin_label_nvkAddress",       &P::ib_admin_label_nvkAddress},
    {"ib_admin_chkbox_rdpEnabled",      &P::ib_admin_chkbox_rdpEnabled},
    {"ib_admin_chkbox_rdpPort",         &P::ib_admin_chkbox_rdpPort},
    {"ib_admin_edbox_rdpPort",          &P::ib_admin_edbox_rdpPort},
    {"ib_admin_chkbox_rdpSound",        &P::ib_admin_chkbox_rdpSound},
    {"ib_admin_chkbox_rdpPrint",        &P::ib_admin_chkbox_rdpPrint},
    {"ib_admin_chkbox_rdpClipb",        &P::ib_admin_chkbox_rdpClipb},
    {"ib_admin_label_rdpAddress",       &P::ib_admin_label_rdpAddress},
    {"ib_admin_chkbox_multiUser",       &P::ib_admin_chkbox_multiUser},
    {"ib_admin_chkbox_actOnLogin",      &P::ib_admin_chkbox_actOnLogin},
    {"ib_admin_rbutton_toConsole",      &P::ib_admin_rbutton_toConsole},
    {"ib_admin_rbutton_lockScreen",     &P::ib_admin_rbutton_lockScreen},
    {"ib_admin_rbutton_toHidden",       &P::ib_admin_rbutton_toHidden},
    {"ib_admin_popup_gldMode",          &P::ib_admin_popup_gldMode},
    {"ib_admin_label_gldMode",          &P::ib_admin_label_gldMode},
    {"ib_admin_popup_imgMode",          &P::ib_admin_popup_imgMode},
    {"ib_admin_slider_imgDept",         &P::ib_admin_slider_imgDept},
    {"ib_admin_slider_imgCapt",         &P::ib_admin_slider_imgCapt},
    {"ib_admin_slider_imgBuff",         &P::ib_admin_slider_imgBuff},
    {"ib_admin_slider_imgShad",         &P::ib_admin_slider_imgShad},
    {"ib_admin_chkbox_scrSaver",        &P::ib_admin_chkbox_scrSaver},
    {"ib_admin_chkbox_wakeUp",          &P::ib_admin_chkbox_wakeUp},
    {"ib_admin_chkbox_noQuartz",        &P::ib_admin_chkbox_noQuartz},
    {"ib_admin_edbox_maxFSoft",         &P::ib_admin_edbox_maxFSoft},
    {"ib_admin_edbox_maxFHard",         &P::ib_admin_edbox_maxFHard},
    {"ib_admin_button_maxFAdjust",      &P::ib_admin_button_maxFAdjust},
    {"ib_admin_button_svrStart",        &P::ib_admin_button_svrStart},
    {"ib_admin_button_svrRestart",      &P::ib_admin_button_svrRestart},
    {"ib_admin_label_svrState",         &P::ib_admin_label_svrState},
    {"ib_admin_label_svrDesc",          &P::ib_admin_label_svrDesc},
    {"ib_admin_button_dispManager",     &P::ib_admin_button_dispManager},
    {"ib_admin_button_accManager",      &P::ib_admin_button_accManager},
    {"ib_admin_chkbox_ntfShowNews",     &P::ib_admin_chkbox_ntfShowNews},
    {"ib_admin_chkbox_ntfShowNotices",  &P::ib_admin_chkbox_ntfShowNotices},
    {"ib_admin_chkbox_ntfShowUpdates",  &P::ib_admin_chkbox_ntfShowUpdates},
    {"ib_admin_chkbox_ntfShowWarnings", &P::ib_admin_chkbox_ntfShowWarnings},
    {"ib_admin_chkbox_ntfPrLow",        &P::ib_admin_chkbox_ntfPrLow},
    {"ib_admin_chkbox_ntfPrMedium",     &P::ib_admin_chkbox_ntfPrMedium},
    {"ib_admin_chkbox_ntfPrHigh",       &P::ib_admin_chkbox_ntfPrHigh},
    {"ib_admin_popup_ntfRepeat",        &P::ib_admin_popup_ntfRepeat},
    {"ib_admin_popup_ntfClose",         &P::ib_admin_popup_ntfClose},
    {"ib_admin_popup_ntfShow",          &P::ib_admin_popup_ntfShow},
    {"ib_admin_chkbox_testIntNotif",    &P::ib_admin_chkbox_testIntNotif},
    {"ib_admin_chkbox_debug",           &P::ib_admin_chkbox_debug},
};
// clang-format on

}  // namespace

std::vector<Control*> NVKServerPrefs::outlets() {
  std::vector<Control*> controls;
  for (const Outlet& outlet : kOutlets) controls.push_back(&(this->*outlet.control));
  controls.insert(controls.end(), {&ib_button_Auth, &ib_oview_confBar, &ib_tview_confView});
  return controls;
}

Control* NVKServerPrefs::outlet(std::string_view name) {
  for (Control* control : outlets()) {
    if (control->name() == name) return control;
  }
  return nullptr;
}

void NVKServerPrefs::connectOutlets(const InterfaceDescription& interface) {
  const auto connect = [&](std::string_view name, Control& control) {
    if (const ControlDescription* description = interface.find(name)) control.describe(name, *description);
  };
  for (const Outlet& outlet : kOutlets) connect(outlet.name, this->*outlet.control);
  connect("ib_button_Auth", ib_button_Auth);
  connect("ib_oview_confBar", ib_oview_confBar);
  connect("ib_tview_confView", ib_tview_confView);

  main_view_.setFrame({0, 0, interface.size.width, interface.size.height});
  const auto place = [&](View& superview, const ControlDescription& description) {
    if (Control* control = outlet(description.outlet)) superview.addSubview(*control);
  };
  for (const ControlDescription& description : interface.frame) place(main_view_, description);
  std::vector<TabViewItem> pages;
  for (const TabDescription& tab : interface.tabs) {
    pages.push_back({tab.label});
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& description : row.controls) place(ib_tview_confView, description);
      }
    }
  }
  ib_tview_confView.setItems(std::move(pages));
}

}  // namespace norvik
