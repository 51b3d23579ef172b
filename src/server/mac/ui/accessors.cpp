// The pending values: what the controls hold at this moment. No accessor changes anything.
#include "src/server/mac/pane/pane.h"

namespace norvik {

namespace {

// A mixed box is off.
int64_t box(const Control& control) {
  return control.isOn() ? 1 : 0;
}
// The box shows the negation of the setting.
int64_t invertedBox(const Control& control) {
  return control.isOn() ? 0 : 1;
}
int64_t item(const Control& popUp) {
  return popUp.indexOfSelectedItem();
}
// Items are stored counted from 1. In unsigned numbers, as the greatest index has none above it.
int64_t itemNumber(const Control& popUp) {
  return static_cast<int64_t>(static_cast<uint64_t>(popUp.indexOfSelectedItem()) + 1);
}
int64_t slider(const Control& control) {
  return control.truncatedValue();
}

// The number that the field begins with, whatever it is: front ends check the range of ports before a save.
int64_t port(const Control& custom, const Control& field, int64_t standard) {
  const int64_t typed = custom.isOn() ? static_cast<int32_t>(leadingInteger(field.stringValue())) : 0;
  return typed != 0 ? typed : standard;
}

using P = NVKServerPrefs;

}  // namespace

// clang-format off
int64_t P::new_user_imgDefs() const { return box(ib_user_chkbox_imgDefs); }
int64_t P::new_user_mseSwap() const { return box(ib_user_chkbox_mseSwap); }
int64_t P::new_user_imgMode() const { return item(ib_user_popup_imgMode); }
int64_t P::new_user_imgDept() const { return slider(ib_user_slider_imgDept); }
int64_t P::new_user_imgCapt() const { return slider(ib_user_slider_imgCapt); }
int64_t P::new_user_imgBuff() const { return slider(ib_user_slider_imgBuff); }
int64_t P::new_user_imgShad() const { return slider(ib_user_slider_imgShad); }

int64_t P::new_admin_nvkPort() const { return port(ib_admin_chkbox_nvkPort, ib_admin_edbox_nvkPort, kNvkDefaultPort); }
int64_t P::new_admin_rdpPort() const { return port(ib_admin_chkbox_rdpPort, ib_admin_edbox_rdpPort, kRdpDefaultPort); }
int64_t P::new_admin_nvkState() const { return box(ib_admin_chkbox_nvkEnabled); }
int64_t P::new_admin_nvkSound() const { return box(ib_admin_chkbox_nvkSound); }
int64_t P::new_admin_nvkPrint() const { return box(ib_admin_chkbox_nvkPrint); }
int64_t P::new_admin_nvkClipb() const { return box(ib_admin_chkbox_nvkClipb); }
int64_t P::new_admin_rdpState() const { return box(ib_admin_chkbox_rdpEnabled); }
int64_t P::new_admin_rdpSound() const { return box(ib_admin_chkbox_rdpSound); }
int64_t P::new_admin_rdpPrint() const { return box(ib_admin_chkbox_rdpPrint); }
int64_t P::new_admin_rdpClipb() const { return box(ib_admin_chkbox_rdpClipb); }
int64_t P::new_admin_gldMode() const { return item(ib_admin_popup_gldMode); }
int64_t P::new_admin_imgMode() const { return item(ib_admin_popup_imgMode); }
int64_t P::new_admin_imgDept() const { return slider(ib_admin_slider_imgDept); }
int64_t P::new_admin_imgCapt() const { return slider(ib_admin_slider_imgCapt); }
int64_t P::new_admin_imgBuff() const { return slider(ib_admin_slider_imgBuff); }
int64_t P::new_admin_imgShad() const { return slider(ib_admin_slider_imgShad); }
int64_t P::new_admin_noQuartz() const { return box(ib_admin_chkbox_noQuartz); }
int64_t P::new_admin_wakeUp() const { return invertedBox(ib_admin_chkbox_wakeUp); }
int64_t P::new_admin_scrSaver() const { return invertedBox(ib_admin_chkbox_scrSaver); }

bool P::new_admin_showNews() const { return ib_admin_chkbox_ntfShowNews.isOn(); }
bool P::new_admin_showNotices() const { return ib_admin_chkbox_ntfShowNotices.isOn(); }
bool P::new_admin_showUpdates() const { return ib_admin_chkbox_ntfShowUpdates.isOn(); }
bool P::new_admin_showWarnings() const { return ib_admin_chkbox_ntfShowWarnings.isOn(); }
bool P::new_admin_showLowPrior() const { return ib_admin_chkbox_ntfPrLow.isOn(); }
bool P::new_admin_showMedPrior() const { return ib_admin_chkbox_ntfPrMedium.isOn(); }
bool P::new_admin_showHighPrior() const { return ib_admin_chkbox_ntfPrHigh.isOn(); }
int64_t P::new_admin_repeatTimeout() const { return itemNumber(ib_admin_popup_ntfRepeat); }
int64_t P::new_admin_closeTimeout() const { return itemNumber(ib_admin_popup_ntfClose); }
int64_t P::new_admin_showTimeout() const { return itemNumber(ib_admin_popup_ntfShow); }
// clang-format on

// While the mode is unknown, the box means nothing.
int64_t P::new_admin_multiUser() const {
  return m_admin_multiUser < 0 ? m_admin_multiUser : box(ib_admin_chkbox_multiUser);
}

// With several users at once, action 2 is the only one there is.
int64_t P::new_admin_loginAct() const {
  if (!ib_admin_chkbox_actOnLogin.isOn()) return -1;
  if (new_admin_multiUser() > 0) return 2;
  if (ib_admin_rbutton_toHidden.isOn()) return 2;
  return box(ib_admin_rbutton_lockScreen);
}

}  // namespace norvik
