// The platform's authorization service.
#pragma once

#include <set>
#include <vector>

#include "src/adapters/apple/tool_queue.h"
#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/authorization_refusal.h"
#include "src/server/mac/platform/authorization.h"

namespace norvik {

class AppleAuthorization : public AuthorizationService, public AuthorizationRefusals {
 public:
  // `tools` is borrowed and outlives this.
  AppleAuthorization(RootFolder root, ToolQueue& tools) : root_(std::move(root)), tools_(tools) {}
  // Frees the references that were not.
  ~AppleAuthorization() override;
  AppleAuthorization(const AppleAuthorization&) = delete;
  AppleAuthorization& operator=(const AppleAuthorization&) = delete;

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override;
  // Asking blocks until the dialog, which is another process's, is answered. The right that the pane asks for
  // is not shared and ends five minutes after the password.
  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override;
  // Answers as the system's policy does and does not call it: on a computer whose policy was loosened, the
  // call would take the right away from every program.
  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override;
  // Tools that wait for their turn are started first, as they need the reference: blocks for as long as
  // ToolQueue::finish does.
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override;
  // After the five minutes the system asks for the password again, here or, for a tool that waited for its
  // turn, then.
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override;

  AuthorizationRefusal lastRefusal() const override { return lastRefusal_; }

 private:
  bool isValid(AuthorizationRef authorization) const { return references_.count(authorization) > 0; }

  RootFolder root_;
  ToolQueue& tools_;
  std::set<AuthorizationRef> references_;  // made and not freed: the service does not survive another one
  AuthorizationRefusal lastRefusal_ = AuthorizationRefusal::none;
};

}  // namespace norvik
