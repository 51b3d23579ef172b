// Saving the server's settings: the file goes through a temporary one that the user may write to the place
// where only the administrator may; settings of the operating system are changed on the way.
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/stores/settings.h"

namespace norvik {

namespace {

constexpr const char* kServerConfigFolder = "/etc/norvik";

}  // namespace

bool NVKServerPrefs::saveAdminConfig() {
  if (!m_admin_Config || !authorized()) {
    logFailure("Norvik[E]: Admin preferences could not be saved.");
    return false;
  }
  if (adminConfigChanged()) {
    storeSettings(*this, serverSettings(), *m_admin_Config);
    adjustSystem();
  }
  m_admin_Config->as<PropertyList::Dictionary>()->insert_or_assign(kConfigVersionKey, kConfigVersion);
  if (!installServerConfig()) return false;
  adoptSettings(*this, serverSettings());
  return true;
}

// What is adjusted here intentionally stays so even if the file cannot be written afterwards.
void NVKServerPrefs::adjustSystem() {
  if (maxFilesChanged() && saveMaxFiles()) m_needReboot = true;
  const int64_t noQuartz = new_admin_noQuartz();
  if (noQuartz != m_admin_noQuartz) {
    runTool(kSetTileSize, noQuartz == 1 ? "0" : "256");
    m_admin_noQuartz = noQuartz;
    m_needReboot = true;
  }
  const int64_t scrSaver = new_admin_scrSaver();
  if (scrSaver != m_admin_scrSaver) {
    runTool(kSetLoginIdleTime, scrSaver == 1 ? "1200" : "0");
    m_admin_scrSaver = scrSaver;
  }
}

bool NVKServerPrefs::installServerConfig() {
  const std::string temporary = getTempFilePath(kServerConfigTempName);
  if (!writeSettingsFile(*m_admin_Config, temporary, kCouldNotWriteFile)) return false;
  // Intentionally an attempt without rights: the installer makes the folder, and the move needs it.
  platform().files.mkdir(kServerConfigFolder, 0775);
  return installFile({kMoveServerConfig, kChmodServerConfig, kChownServerConfig}, temporary,
                     kServerConfigFile);
}

}  // namespace norvik
