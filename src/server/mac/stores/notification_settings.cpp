// Which notifications the menu agent shows, in its preference file in the home folder. The pane treats them
// as the administrator's: a change counts only while it is unlocked, though the file needs no rights.
#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

// The doubled colon is what log readers know.
constexpr const char* kCouldNotWriteMenuAgentFile = "Norvik[E]: Could not write file: : %s";

// clang-format off
constexpr Setting kNotificationSettings[] = {
    {nullptr, "NvkNotificationShowNews",           StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowNews>,      pendingOf<&P::new_admin_showNews>,      1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfShowNews}},
    {nullptr, "NvkNotificationShowNotices",        StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowNotices>,   pendingOf<&P::new_admin_showNotices>,   1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfShowNotices}},
    {nullptr, "NvkNotificationShowUpdates",        StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowUpdates>,   pendingOf<&P::new_admin_showUpdates>,   1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfShowUpdates}},
    {nullptr, "NvkNotificationShowWarnings",       StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowWarnings>,  pendingOf<&P::new_admin_showWarnings>,  1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfShowWarnings}},
    {nullptr, "NvkNotificationShowLowPriority",    StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowPrLow>,     pendingOf<&P::new_admin_showLowPrior>,  1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfPrLow}},
    {nullptr, "NvkNotificationShowMediumPriority", StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowPrMedium>,  pendingOf<&P::new_admin_showMedPrior>,  1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfPrMedium}},
    {nullptr, "NvkNotificationShowHighPriority",   StoredAs::boolean,   fieldOf<&P::m_admin_ntfShowPrHigh>,    pendingOf<&P::new_admin_showHighPrior>, 1, kLeast, kMost, Shown::value, {&P::ib_admin_chkbox_ntfPrHigh}},
    {nullptr, "NvkNotificationRepeatTimeout",      StoredAs::integer64, fieldOf<&P::m_admin_ntfRepeatTimeout>, pendingOf<&P::new_admin_repeatTimeout>, 3, kLeast, kMost, Shown::item,  {&P::ib_admin_popup_ntfRepeat}},
    {nullptr, "NvkNotificationCloseTimeout",       StoredAs::integer64, fieldOf<&P::m_admin_ntfCloseTimeout>,  pendingOf<&P::new_admin_closeTimeout>,  2, kLeast, kMost, Shown::item,  {&P::ib_admin_popup_ntfClose}},
    {nullptr, "NvkNotificationShowTimeout",        StoredAs::integer64, fieldOf<&P::m_admin_ntfShowTimeout>,   pendingOf<&P::new_admin_showTimeout>,   3, kLeast, kMost, Shown::item,  {&P::ib_admin_popup_ntfShow}},
};
// clang-format on

}  // namespace

SettingsTable notificationSettings() {
  return kNotificationSettings;
}

void NVKServerPrefs::loadNotificationSettings() {
  PropertyListFiles& files = platform().propertyLists;
  m_admin_Ntf_Config = files.dictionaryWithContentsOfFile(files.stringByExpandingTildeInPath(kMenuAgentFile));
  if (!m_admin_Ntf_Config) m_admin_Ntf_Config.emplace();
  loadSettings(*this, notificationSettings(), *m_admin_Ntf_Config);
  for (const Setting& setting : notificationSettings()) setting.show(*this);
  // Two boxes for tests, which are not for people.
  ib_admin_chkbox_testIntNotif.removeFromSuperview();
  ib_admin_chkbox_debug.removeFromSuperview();
}

bool NVKServerPrefs::notificationSettingsChanged() const {
  return authorized() && settingsDiffer(*this, notificationSettings());
}

bool NVKServerPrefs::saveNotificationSettings() {
  if (!m_admin_Ntf_Config) {
    logFailure("Norvik[E]: Notification preferences could not be saved.");
    return false;
  }
  if (notificationSettingsChanged()) storeSettings(*this, notificationSettings(), *m_admin_Ntf_Config);
  const std::string path = platform().propertyLists.stringByExpandingTildeInPath(kMenuAgentFile);
  if (!writeSettingsFile(*m_admin_Ntf_Config, path, kCouldNotWriteMenuAgentFile)) return false;
  adoptSettings(*this, notificationSettings());
  return true;
}

}  // namespace norvik
