// Apply: saves every changed group in a fixed order and makes what was saved take effect.
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

namespace {

constexpr OSType kSetupType = fourCharCode("NVKI");
constexpr OSType kSetupSignature = fourCharCode("nvki");

}  // namespace

bool NVKServerPrefs::applyAllChanges() {
  const bool userSaved = userConfigChanged() && saveUserConfig();
  bool serverSaved = false;
  if (adminConfigChanged()) {
    serverSaved = saveAdminConfig();
    if (m_needReboot) offerReboot();
  }
  if (notificationSettingsChanged() && saveNotificationSettings()) {
    platform().notifications.postNotificationName(
        "NvkMunuUpdateSettingsNotification", nullptr,
        NSNotificationDeliverImmediately | NSNotificationPostToAllSessions);
  }
  // The server's own command reaches the agents as well, so one of the two is enough.
  if (serverSaved) {
    runTool(kApplyConfig);
  } else if (userSaved) {
    apply_user_config();
  }
  return true;
}

// The flag goes first: a restart that is declined is not offered again until another change needs one.
void NVKServerPrefs::offerReboot() {
  m_needReboot = false;
  if (isSetupActive()) return;
  const int answer = platform().alerts.NSRunAlertPanel("Reboot is required",
                                                       "Some changes you have made require reboot.\n\n"
                                                       "Do you want to reboot now?",
                                                       "No, I'll Reboot Later", "Yes, Reboot Now", nullptr);
  if (answer == NSAlertAlternateReturn) runTool(kReboot);
}

bool NVKServerPrefs::isSetupActive() {
  ProcessManager& processes = platform().processManager;
  ProcessSerialNumber process;
  // All zero, its length too, for every call.
  ProcessInfoRec information;
  while (processes.GetNextProcess(process) == noErr) {
    if (processes.GetProcessInformation(process, information) != noErr) continue;
    if (information.processType == kSetupType && information.processSignature == kSetupSignature) return true;
  }
  return false;
}

}  // namespace norvik
