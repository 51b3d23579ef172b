// The user's image and mouse settings, in the agent's preference file in the home folder. Needs no lock.
#include "src/server/mac/stores/user_settings.h"

#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

constexpr const char* kAgentIdentifier = "com.veltrane.nvkagent";

// The load places the image controls itself: while the user follows the server, they show its values.
// clang-format off
constexpr Setting kUserSettings[] = {
    {nullptr, "ImageUseDefaults", StoredAs::boolean,   fieldOf<&P::m_user_imgDefs>, pendingOf<&P::new_user_imgDefs>, 1, kLeast, kMost, Shown::on,        {&P::ib_user_chkbox_imgDefs}},
    {nullptr, "ImageQualityMode", StoredAs::integer32, fieldOf<&P::m_user_imgMode>, pendingOf<&P::new_user_imgMode>, 2, 0, 2,          Shown::elsewhere, {&P::ib_user_popup_imgMode}, 0, {&P::m_admin_imgMode, &P::new_admin_imgMode}},
    {nullptr, "ImageColorDepth",  StoredAs::integer32, fieldOf<&P::m_user_imgDept>, pendingOf<&P::new_user_imgDept>, 6, 4, 8,          Shown::elsewhere, {&P::ib_user_slider_imgDept}, 0, {&P::m_admin_imgDept, &P::new_admin_imgDept}},
    {nullptr, "ImageCaptPriority", StoredAs::integer32, fieldOf<&P::m_user_imgCapt>, pendingOf<&P::new_user_imgCapt>, 3, 1, 5,          Shown::elsewhere, {&P::ib_user_slider_imgCapt}, 0, {&P::m_admin_imgCapt, &P::new_admin_imgCapt}},
    {nullptr, "ImageCaptBuffer",  StoredAs::integer32, fieldOf<&P::m_user_imgBuff>, pendingOf<&P::new_user_imgBuff>, 3, 1, 5,          Shown::elsewhere, {&P::ib_user_slider_imgBuff}, 0, {&P::m_admin_imgBuff, &P::new_admin_imgBuff}},
    {nullptr, "ImageShadowSize",  StoredAs::integer32, fieldOf<&P::m_user_imgShad>, pendingOf<&P::new_user_imgShad>, 4, 0, 72,         Shown::elsewhere, {&P::ib_user_slider_imgShad}, 0, {&P::m_admin_imgShad, &P::new_admin_imgShad}},
    {nullptr, "SwapMouseButtons", StoredAs::boolean,   fieldOf<&P::m_user_mseSwap>, pendingOf<&P::new_user_mseSwap>, 0, kLeast, kMost, Shown::value,     {&P::ib_user_chkbox_mseSwap}},
};
// clang-format on

bool isAgent(const ProcessSerialNumber& process) {
  const auto dictionary = platform().processManager.ProcessInformationCopyDictionary(process);
  if (!dictionary) return false;
  const PropertyList* identifier = dictionary->find("CFBundleIdentifier");
  const std::string* text = identifier != nullptr ? identifier->as<std::string>() : nullptr;
  return text != nullptr && *text == kAgentIdentifier;
}

}  // namespace

SettingsTable userSettings() {
  return kUserSettings;
}

bool NVKServerPrefs::loadUserConfig() {
  PropertyListFiles& files = platform().propertyLists;
  m_user_Config = files.dictionaryWithContentsOfFile(files.stringByExpandingTildeInPath(kAgentFile));
  if (!m_user_Config) m_user_Config.emplace();
  loadSettings(*this, userSettings(), *m_user_Config);
  for (const Setting& setting : userSettings()) setting.show(*this);
  for (const Setting& setting : userSettings()) {
    if (!setting.followed) continue;
    (this->*setting.controls[0])
        .setIntegerValue(m_user_imgDefs != 0 ? setting.followed.baseline(*this) : setting.baseline(*this));
  }
  return m_user_Config.has_value();
}

bool NVKServerPrefs::userConfigChanged() const {
  if (m_user_imgDefs != new_user_imgDefs() || m_user_mseSwap != new_user_mseSwap()) return true;
  // While the user follows the server's image settings, the positions of the image controls mean nothing.
  if (new_user_imgDefs() == 1) return false;
  return settingsDiffer(*this, userSettings());
}

bool NVKServerPrefs::saveUserConfig() {
  if (!m_user_Config) {
    logFailure("Norvik[E]: User preferences could not be saved.");
    return false;
  }
  if (userConfigChanged()) storeSettings(*this, userSettings(), *m_user_Config);
  m_user_Config->as<PropertyList::Dictionary>()->insert_or_assign(kConfigVersionKey, kConfigVersion);
  const std::string path = platform().propertyLists.stringByExpandingTildeInPath(kAgentFile);
  if (!writeSettingsFile(*m_user_Config, path, kCouldNotWriteFile)) return false;
  adoptSettings(*this, userSettings());
  return true;
}

void apply_user_config() {
  ProcessManager& processes = platform().processManager;
  ProcessSerialNumber process;
  ProcessInfoRec information;
  information.processInfoLength = sizeof information;
  while (processes.GetNextProcess(process) == noErr &&
         processes.GetProcessInformation(process, information) == noErr) {
    if (information.processType != fourCharCode("APPL")) continue;
    if (information.processSignature != fourCharCode("nvka")) continue;
    if (!isAgent(process)) continue;
    int32_t pid = 0;
    if (processes.GetProcessPID(process, pid) == noErr) platform().posix.kill(pid, Signal::user2);
  }
}

}  // namespace norvik
