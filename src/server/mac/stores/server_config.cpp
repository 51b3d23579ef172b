// The server's settings: their table, reading them from the configuration file, and whether the controls
// differ from what was read. Two of them are the operating system's and are read from its own preference
// files.
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

constexpr const char* kNvkKey = "NVKService";
constexpr const char* kRdpKey = "RDPService";

// Keys of an older layout, now dropped from the file by the next save.
constexpr const char* kLegacyKeys[] = {"SingleUserToConsole", "OpenGLAcceleration", "SoundOutputEnabled",
                                       "PrintSupportEnabled"};

// A load intentionally leaves the capture buffer's slider where it is. The driver mode is in no file; the
// last two are in files of the operating system.
// clang-format off
constexpr Setting kServerSettings[] = {
    {nullptr, "SingleUser",          StoredAs::invertedUnlessUnknown, fieldOf<&P::m_admin_multiUser>, pendingOf<&P::new_admin_multiUser>, 0, kLeast, kMost, Shown::onPositive, {&P::ib_admin_chkbox_multiUser}},
    {nullptr, "ActionOnConnect",     StoredAs::integer32,             fieldOf<&P::m_admin_loginAct>,  pendingOf<&P::new_admin_loginAct>,  0, kLeast, kMost, Shown::elsewhere,  {&P::ib_admin_chkbox_actOnLogin, &P::ib_admin_rbutton_toConsole, &P::ib_admin_rbutton_lockScreen, &P::ib_admin_rbutton_toHidden}},
    {nullptr, "ImageQualityMode",    StoredAs::integer32,             fieldOf<&P::m_admin_imgMode>,   pendingOf<&P::new_admin_imgMode>,   2, 0, 2,          Shown::value,      {&P::ib_admin_popup_imgMode}},
    {nullptr, "ImageColorDepth",     StoredAs::integer32,             fieldOf<&P::m_admin_imgDept>,   pendingOf<&P::new_admin_imgDept>,   6, 4, 8,          Shown::value,      {&P::ib_admin_slider_imgDept}},
    {nullptr, "ImageCaptPriority",   StoredAs::integer32,             fieldOf<&P::m_admin_imgCapt>,   pendingOf<&P::new_admin_imgCapt>,   3, 1, 5,          Shown::value,      {&P::ib_admin_slider_imgCapt}},
    {nullptr, "ImageCaptBuffer",     StoredAs::integer32,             fieldOf<&P::m_admin_imgBuff>,   pendingOf<&P::new_admin_imgBuff>,   3, 1, 5,          Shown::elsewhere,  {&P::ib_admin_slider_imgBuff}},
    {nullptr, "ImageShadowSize",     StoredAs::integer32,             fieldOf<&P::m_admin_imgShad>,   pendingOf<&P::new_admin_imgShad>,   4, 0, 72,         Shown::value,      {&P::ib_admin_slider_imgShad}},
    {nullptr, "WakeupMode",          StoredAs::integer32,             fieldOf<&P::m_admin_wakeUp>,    pendingOf<&P::new_admin_wakeUp>,    0, kLeast, kMost, Shown::onZero,     {&P::ib_admin_chkbox_wakeUp}},
    {kNvkKey, "PortNumber",          StoredAs::integer32,             fieldOf<&P::m_admin_nvkPort>,   pendingOf<&P::new_admin_nvkPort>,   0, kLeast, kMost, Shown::value,      {&P::ib_admin_edbox_nvkPort, &P::ib_admin_chkbox_nvkPort}, kNvkDefaultPort},
    {kNvkKey, "Disabled",            StoredAs::invertedBoolean,       fieldOf<&P::m_admin_nvkState>,  pendingOf<&P::new_admin_nvkState>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_nvkEnabled}},
    {kNvkKey, "ClipboardEnabled",    StoredAs::boolean,               fieldOf<&P::m_admin_nvkClipb>,  pendingOf<&P::new_admin_nvkClipb>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_nvkClipb}},
    {kNvkKey, "SoundOutputEnabled",  StoredAs::boolean,               fieldOf<&P::m_admin_nvkSound>,  pendingOf<&P::new_admin_nvkSound>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_nvkSound}},
    {kNvkKey, "PrintSupportEnabled", StoredAs::boolean,               fieldOf<&P::m_admin_nvkPrint>,  pendingOf<&P::new_admin_nvkPrint>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_nvkPrint}},
    {kRdpKey, "PortNumber",          StoredAs::integer32,             fieldOf<&P::m_admin_rdpPort>,   pendingOf<&P::new_admin_rdpPort>,   0, kLeast, kMost, Shown::value,      {&P::ib_admin_edbox_rdpPort, &P::ib_admin_chkbox_rdpPort}, kRdpDefaultPort},
    {kRdpKey, "Disabled",            StoredAs::invertedBoolean,       fieldOf<&P::m_admin_rdpState>,  pendingOf<&P::new_admin_rdpState>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_rdpEnabled}},
    {kRdpKey, "ClipboardEnabled",    StoredAs::boolean,               fieldOf<&P::m_admin_rdpClipb>,  pendingOf<&P::new_admin_rdpClipb>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_rdpClipb}},
    {kRdpKey, "SoundOutputEnabled",  StoredAs::boolean,               fieldOf<&P::m_admin_rdpSound>,  pendingOf<&P::new_admin_rdpSound>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_rdpSound}},
    {kRdpKey, "PrintSupportEnabled", StoredAs::boolean,               fieldOf<&P::m_admin_rdpPrint>,  pendingOf<&P::new_admin_rdpPrint>,  1, kLeast, kMost, Shown::value,      {&P::ib_admin_chkbox_rdpPrint}},
    {nullptr, "",                    StoredAs::nowhere,               fieldOf<&P::m_admin_gldMode>,   pendingOf<&P::new_admin_gldMode>,   0, kLeast, kMost, Shown::elsewhere,  {&P::ib_admin_popup_gldMode}},
    {nullptr, "",                    StoredAs::nowhere,               fieldOf<&P::m_admin_noQuartz>,  pendingOf<&P::new_admin_noQuartz>,  0, kLeast, kMost, Shown::on,         {&P::ib_admin_chkbox_noQuartz}},
    {nullptr, "",                    StoredAs::nowhere,               fieldOf<&P::m_admin_scrSaver>,  pendingOf<&P::new_admin_scrSaver>,  1, kLeast, kMost, Shown::onZero,     {&P::ib_admin_chkbox_scrSaver}},
};
// clang-format on

// Whether the value exists and is the number 0.
bool isZero(const PropertyList* value) {
  return value != nullptr && intValue(value) == 0;
}

PropertyList dictionaryOf(const char* path) {
  return platform().propertyLists.dictionaryWithContentsOfFile(path).value_or(PropertyList());
}

// The login window's screen saver is on unless its idle time is 0; hardware compositing is off where the tile
// height is 0, whatever the width that is written beside it.
void loadSystemValues(NVKServerPrefs& pane) {
  pane.m_admin_scrSaver = isZero(dictionaryOf(kScreenSaverFile).find("loginWindowIdleTime")) ? 0 : 1;
  const PropertyList windowServer = dictionaryOf(kWindowServerFile);
  const PropertyList* compositor = windowServer.find("GLCompositor");
  pane.m_admin_noQuartz = compositor != nullptr && isZero(compositor->find("tileHeight")) ? 1 : 0;
}

void showActionOnConnect(NVKServerPrefs& pane) {
  const int64_t action = pane.m_admin_loginAct;
  pane.ib_admin_chkbox_actOnLogin.setState(action != -1 ? kOnState : kOffState);
  pane.ib_admin_rbutton_toHidden.setState(action == 2 ? kOnState : kOffState);
  pane.ib_admin_rbutton_toConsole.setState(action == 0 ? kOnState : kOffState);
  pane.ib_admin_rbutton_lockScreen.setState(action == 1 ? kOnState : kOffState);
}

void showServerSettings(NVKServerPrefs& pane) {
  for (const Setting& setting : serverSettings()) setting.show(pane);
  pane.ib_admin_chkbox_nvkPort.setState(pane.m_admin_nvkPort != kNvkDefaultPort ? kOnState : kOffState);
  pane.ib_admin_chkbox_rdpPort.setState(pane.m_admin_rdpPort != kRdpDefaultPort ? kOnState : kOffState);
  // A load always has a dictionary, and so a known mode; the rule names the case nevertheless.
  if (pane.m_admin_multiUser < 0) pane.ib_admin_chkbox_multiUser.setEnabled(false);  // GCOVR_EXCL_LINE
  showActionOnConnect(pane);
}

}  // namespace

SettingsTable serverSettings() {
  return kServerSettings;
}

bool NVKServerPrefs::loadAdminConfig() {
  m_admin_Config = dictionaryOf(kServerConfigFile);
  auto* root = m_admin_Config->as<PropertyList::Dictionary>();
  for (const char* key : kLegacyKeys) root->erase(key);
  loadSettings(*this, serverSettings(), *m_admin_Config);
  // With several users at once there is no console to switch to and no single screen to lock.
  if (m_admin_multiUser > 0 && m_admin_loginAct != 2) m_admin_loginAct = -1;
  loadSystemValues(*this);
  showServerSettings(*this);
  return m_admin_Config.has_value();
}

bool NVKServerPrefs::adminConfigChanged() const {
  if (!authorized()) return false;
  return settingsDiffer(*this, serverSettings()) || maxFilesChanged();
}

}  // namespace norvik
