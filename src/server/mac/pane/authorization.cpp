// Unlocking and locking the pane. Nothing is logged: a refusal is not a failure.
#include <array>

#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

namespace {

constexpr const char* kAdminRight = "system.privilege.admin";

// The tools that the right is asked for by name. The others of the command table run under the same right.
constexpr const char* kRightTools[] = {PROC_NVKSVC, PROC_SYSMV, PROC_CHMOD, PROC_CHOWN};

std::array<AuthorizationItem, std::size(kRightTools)> requestedRights() {
  std::array<AuthorizationItem, std::size(kRightTools)> rights;
  for (std::size_t i = 0; i < rights.size(); ++i) rights[i] = {kAdminRight, kRightTools[i], 0};
  return rights;
}

}  // namespace

bool NVKServerPrefs::authorize(bool interactive, bool update) {
  if (authorized() && !update) return true;
  AuthorizationService& service = platform().authorization;
  if (m_authRef != nullptr) {
    service.AuthorizationRightRemove(m_authRef, kAdminRight);
  } else {
    service.AuthorizationCreate({}, kAuthorizationFlagDefaults, m_authRef);
  }
  AuthorizationFlags flags = kAuthorizationFlagExtendRights;
  if (interactive) {
    flags |= kAuthorizationFlagInteractionAllowed;
    // Drawn at once, as the request may take as long as a person takes to find a password.
    ib_label_Auth.setStringValue("Authenticating...");
    platform().drawing.display(ib_label_Auth);
  }
  const auto rights = requestedRights();
  const OSStatus status = service.AuthorizationCopyRights(m_authRef, rights, flags);
  if (status != errAuthorizationSuccess || m_authRef == nullptr) {
    deauthorize();
  } else {
    loadMaxFiles();
    loadConfBar();
  }
  return authorized();
}

void NVKServerPrefs::deauthorize() {
  if (m_authRef == nullptr) return;
  platform().authorization.AuthorizationFree(m_authRef, kAuthorizationFlagDestroyRights);
  m_authRef = nullptr;
  loadConfBar();
}

}  // namespace norvik
