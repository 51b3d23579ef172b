// Keeping the view in step: the status texts, and which controls may be used. Runs four times a second, so it
// sets nothing that is set already and makes no text anew that is the same.
#include <string_view>

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/ui/control_table.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

constexpr std::string_view kNvkUnreachable = "Norvik clients cannot connect to this computer.";
constexpr std::string_view kRdpUnreachable = "RDP clients cannot connect to this computer.";

unsigned when(bool holds, Condition condition) {
  return holds ? condition : 0u;
}

unsigned conditionsNow(const P& p, bool enable) {
  return when(enable, kEnabled) | when(enable && !p.ib_user_chkbox_imgDefs.isOn(), kOwnImage) |
         when(enable && p.authorized(), kUnlocked) | when(p.m_admin_multiUser >= 0, kMultiUserKnown) |
         when(p.m_serverPid != -1, kRunning) |
         when(p.ib_admin_chkbox_actOnLogin.state() != kOffState, kActs) |
         when(p.new_admin_multiUser() < 1, kSingleUser) | when(p.ib_admin_chkbox_nvkEnabled.isOn(), kNvk) |
         when(p.ib_admin_chkbox_rdpEnabled.isOn(), kRdp) |
         when(p.ib_admin_chkbox_nvkPort.state() != kOffState, kNvkPort) |
         when(p.ib_admin_chkbox_rdpPort.state() != kOffState, kRdpPort) |
         when(p.m_admin_maxFiles.action != kLimitUnknown, kLimitKnown) |
         when(enable && (p.userConfigChanged() || p.adminConfigChanged() || p.notificationSettingsChanged()),
              kPending);
}

struct ServerTexts {
  std::string_view button;
  std::string_view description;
  std::string_view state;
};
constexpr ServerTexts kStopped{"Start", "Click Start to allow others to access this computer.", "Stopped"};
constexpr ServerTexts kStarted{"Stop", "Click Stop to prevent others from accessing this computer.",
                               "Started"};

// What the texts were last made from; shared by all panes of the process.
int64_t svr_pid = 0;
int64_t nvk_port = 0;
int64_t nvk_state = 0;
int64_t rdp_port = 0;
int64_t rdp_state = 0;

bool sameAsLastRefresh(const P& p) {
  return svr_pid == p.m_serverPid && nvk_port == p.new_admin_nvkPort() &&
         nvk_state == p.new_admin_nvkState() && rdp_port == p.new_admin_rdpPort() &&
         rdp_state == p.new_admin_rdpState();
}

void showAddresses(P& p) {
  const bool running = p.m_serverPid != -1;
  const bool nvkReachable = nvk_state != 0 && running;
  const bool rdpReachable = rdp_state != 0 && running;
  if (nvkReachable) p.updateNvkAddr(nvk_port);
  p.ib_admin_label_nvkAddress.setStringValue(nvkReachable ? SBUF_NVKADR : kNvkUnreachable);
  if (rdpReachable) p.updateRdpAddr(rdp_port);
  p.ib_admin_label_rdpAddress.setStringValue(rdpReachable ? SBUF_RDPADR : kRdpUnreachable);
}

void showServerState(P& p) {
  const ServerTexts& texts = p.m_serverPid == -1 ? kStopped : kStarted;
  p.ib_admin_button_svrStart.setTitle(texts.button);
  p.ib_admin_label_svrDesc.setStringValue(texts.description);
  p.ib_admin_label_svrState.setStringValue(texts.state);
}

void showLock(P& p) {
  p.ib_label_Auth.setStringValue(p.authorized() ? "Click the lock to prevent administrative changes"
                                                : "Click the lock to make administrative changes");
  p.ib_button_Auth.setImage(p.authorized() ? p.m_authImage2 : p.m_authImage1);
}

}  // namespace

void NVKServerPrefs::updateGui(bool skipUnchanged, bool redraw) {
  svr_pid = nvkd_pid();
  if (skipUnchanged && sameAsLastRefresh(*this)) return;
  m_serverPid = static_cast<int32_t>(svr_pid);
  // An event that is handled while a change begins may refresh too; the change is not over then.
  if (m_trackState) serverIsChanging_ = false;
  nvk_port = new_admin_nvkPort();
  nvk_state = new_admin_nvkState();
  rdp_port = new_admin_rdpPort();
  rdp_state = new_admin_rdpState();
  showAddresses(*this);
  showServerState(*this);
  showLock(*this);
  enableGui(true, redraw);
}

void NVKServerPrefs::enableGui(bool enable, bool redraw) {
  const unsigned now = conditionsNow(*this, enable);
  for (const ControlRow& row : controlTable()) {
    if (row.conditions == kNotTouched) continue;
    row.control(*this).setEnabled((now & row.conditions) == row.conditions);
  }
  if (redraw) redrawView(&mainView_);
}

// Children first, so that what a pass changed is seen at once and not in the next drawing cycle.
void NVKServerPrefs::redrawView(View* view) {
  if (view == nullptr) return;
  for (View* subview : view->subviews()) redrawView(subview);
  platform().drawing.displayIfNeeded(*view);
}

}  // namespace norvik
