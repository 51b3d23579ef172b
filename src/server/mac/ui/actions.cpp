// What a click on each control does, and the dialogs that it raises.
#include "src/server/mac/ui/actions.h"

#include "src/server/mac/platform/platform.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/ui/control_table.h"

namespace norvik {

namespace actions {

namespace {

using P = NVKServerPrefs;

constexpr const char* kSupportPage = "https://www.veltrane.com/norvik/support";
constexpr const char* kSupportPageKey = "NVKProductSupport";

// One literal for each paragraph.
constexpr const char* kOpenFilesTitle = "Multiuser Mode Adjustment";
constexpr const char* kOpenFilesMessage =
    "If you wish to connect more than one user simultaneously, it is recommended that you adjust \"Open Files Limit\" as well.\n\n"
    "Do you want to make this adjustment automatically?\n";

constexpr const char* kDriverTitle = "Norvik OpenGL driver mode";
// The misspelt word is part of the text as it was translated and documented.
constexpr const char* kDriverMessage =
    "You have chosen Norvik OpenGL driver mode.\n"
    "This mode is recommended for serving multiple remote connections simultaneously. Please note that Norvik OpenGL driver was created to resolve known issues with the sharing of the OpenGL hardware driver for multiple connections. However, Norvik OpenGL driver cannot guarantee correct functionality for all applications that require hadrware acceleration. It is strongly recommended to enable remote login access (SSH) before applying this mode. To disable Norvik OpenGL driver using the command line, please enter the following command:\n\n"
    "sudo nvkservice gldcmd uninstall -f\n\n"
    "Are you sure you want to switch to Norvik OpenGL driver mode?\n";

constexpr const char* kQuartzTitle = "Disabling Quartz Extreme acceleration";
constexpr const char* kQuartzMessage =
    "This adjustment may solve a number of graphics problems in remote desktop sessions. However, we cannot guarantee correct functionality for all applications that require hardware acceleration.\n\n"
    "Are you sure you want to disable Quartz Extreme acceleration?\n";

bool confirmed(const char* title, const char* message, const char* proceed, const char* decline) {
  return platform().alerts.NSRunAlertPanel(title, message, proceed, decline, nullptr) == NSAlertDefaultReturn;
}

void switchTo(Control& control, bool on) {
  control.setState(on ? kOnState : kOffState);
}

void refresh(P& pane) {
  pane.updateGui(true, false);
}

// Whether the lock may close: nothing is pending, or it was applied or discarded.
bool settledBeforeLocking(P& pane) {
  if (!pane.adminConfigChanged()) return true;
  const int answer = platform().alerts.NSRunAlertPanel("Norvik preferences was changed",
                                                       "What do you want to do with changes you made?",
                                                       "Apply now", "Discard changes", "Continue editing");
  if (answer == NSAlertDefaultReturn) {
    pane.applyAllChanges();
    return true;
  }
  if (answer != NSAlertAlternateReturn) return false;
  pane.discardServerAndUserChanges();
  pane.loadNotificationSettings();
  return true;
}

void offerOpenFilesLimit(P& pane) {
  if (pane.m_admin_maxFiles.action != kLimitAdjust) return;
  if (confirmed(kOpenFilesTitle, kOpenFilesMessage, "Yes, Proceed", "No, I'll Do It Later"))
    pane.changeMaxFiles();
}

}  // namespace

void edit(P& pane, Control& /*sender*/) {
  refresh(pane);
}

// A user page that follows the server's image settings takes what the server's controls say; one that does
// not keeps its own, each slider on a whole number.
void followImageDefaults(P& pane, Control& /*sender*/) {
  const bool follows = pane.new_user_imgDefs() != 0;
  for (const Setting& setting : userSettings()) {
    if (!setting.followed) continue;
    const int64_t value = follows ? setting.followed.pendingValue(pane) : setting.pendingValue(pane);
    Control& control = pane.*setting.controls[0];
    if (control.kind() == ControlKind::slider) {
      control.setDoubleValue(static_cast<double>(static_cast<float>(value)));
    } else {
      control.selectItemAtIndex(value);
    }
  }
  refresh(pane);
}

void changeImageDefaults(P& pane, Control& /*sender*/) {
  pane.buttonClicked(pane.ib_user_chkbox_imgDefs);
}

void clickLock(P& pane, Control& /*sender*/) {
  if (!pane.authorized()) {
    pane.authorize(true, false);
  } else if (settledBeforeLocking(pane)) {
    pane.deauthorize();
  } else {
    return;  // editing goes on: nothing changed, so nothing is refreshed
  }
  refresh(pane);
}

void clickRestart(P& pane, Control& /*sender*/) {
  pane.restartServer();
  refresh(pane);
}

void clickStart(P& pane, Control& /*sender*/) {
  if (nvkd_pid() != -1) {
    pane.stopServer();
  } else {
    pane.startServer();
  }
  refresh(pane);
}

void clickDisplays(P& pane, Control& /*sender*/) {
  pane.runDispManager();
  refresh(pane);
}

void clickAccess(P& pane, Control& /*sender*/) {
  pane.runAccessManager();
  refresh(pane);
}

void clickApply(P& pane, Control& /*sender*/) {
  pane.applyAllChanges();
  refresh(pane);
}

// The field goes back to the standard port after the refresh, intentionally: the next tick takes it up.
void clickNvkPort(P& pane, Control& sender) {
  refresh(pane);
  if (!sender.isOn()) pane.ib_admin_edbox_nvkPort.setIntegerValue(kNvkDefaultPort);
}

void clickRdpPort(P& pane, Control& sender) {
  refresh(pane);
  if (!sender.isOn()) pane.ib_admin_edbox_rdpPort.setIntegerValue(kRdpDefaultPort);
}

void clickSessionMode(P& pane, Control& sender) {
  const int64_t action = pane.new_admin_loginAct();
  switchTo(pane.ib_admin_rbutton_toHidden, action == 2);
  switchTo(pane.ib_admin_rbutton_toConsole, action == 0);
  switchTo(pane.ib_admin_rbutton_lockScreen, action == 1);
  const int64_t multiUser = pane.new_admin_multiUser();
  if (&sender == &pane.ib_admin_chkbox_multiUser && multiUser != pane.m_admin_multiUser && multiUser == 1) {
    switchTo(pane.ib_admin_chkbox_actOnLogin, false);  // the radio buttons keep what was set above
    offerOpenFilesLimit(pane);
  }
  // On every click of either box, on or off: a computer that is used from afar must wake and stay awake.
  switchTo(pane.ib_admin_chkbox_scrSaver, true);
  switchTo(pane.ib_admin_chkbox_wakeUp, true);
  refresh(pane);
}

void clickActionOnConnect(P& pane, Control& sender) {
  for (Control* radio : {&pane.ib_admin_rbutton_toHidden, &pane.ib_admin_rbutton_toConsole,
                         &pane.ib_admin_rbutton_lockScreen}) {
    switchTo(*radio, radio == &sender);
  }
  refresh(pane);
}

void chooseDriverMode(P& pane, Control& sender) {
  const int64_t mode = pane.new_admin_gldMode();
  if (mode != pane.m_admin_gldMode && mode >= 1 &&
      !confirmed(kDriverTitle, kDriverMessage, "Yes, Proceed", "No, Thank You")) {
    sender.selectItemAtIndex(pane.m_admin_gldMode);
  }
  refresh(pane);
}

void clickAdjust(P& pane, Control& /*sender*/) {
  pane.changeMaxFiles();
  refresh(pane);
}

void clickNoQuartz(P& pane, Control& sender) {
  const int64_t noQuartz = pane.new_admin_noQuartz();
  if (noQuartz != pane.m_admin_noQuartz && noQuartz == 1 &&
      !confirmed(kQuartzTitle, kQuartzMessage, "Yes, Proceed", "No, Thank You")) {
    switchTo(sender, false);
  }
  refresh(pane);
}

void clickHelp(P& /*pane*/, Control& /*sender*/) {
  Bundles& bundles = platform().bundles;
  const auto page = bundles.CFBundleGetValueForInfoDictionaryKey(bundles.paneBundle(), kSupportPageKey);
  platform().workspace.openURL(page.value_or(kSupportPage));
}

}  // namespace actions

// Every control sends the same action; the control table names what handles it. A control without one, such
// as a port field, needs none: the next tick sees what was typed.
void NVKServerPrefs::buttonClicked(Control& sender) {
  for (const ControlRow& row : controlTable()) {
    if (row.action != nullptr && &row.control(*this) == &sender) return row.action(*this, sender);
  }
}

}  // namespace norvik
