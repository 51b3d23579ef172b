// Authorization for a sandbox: a policy decides who may act as the administrator, and tools run as real
// processes with the rights of the front end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/adapters/linux/authorization_references.h"
#include "src/adapters/linux/tool_launcher.h"
#include "src/server/mac/platform/authorization.h"

namespace norvik {

// The strings of a null-terminated vector, which may be null itself.
std::vector<std::string> argumentWords(const char* const* arguments);

class LinuxAuthorization : public AuthorizationService {
 public:
  // Asks whether the person is an administrator; may block meanwhile.
  using InteractivePolicy = std::function<bool()>;

  // `tools` is borrowed.
  LinuxAuthorization(ToolLauncher& tools, InteractivePolicy policy);

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override;
  // A request without interaction succeeds from the first interactive request that is granted until that
  // grant ends.
  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override;
  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override;
  // kAuthorizationFlagDestroyRights ends the grant for every reference, if this one ever had rights.
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override;
  // Refused with errAuthorizationDenied unless the reference holds a right.
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override;

 private:
  bool decide(AuthorizationFlags flags);

  ToolLauncher& tools_;
  InteractivePolicy policy_;
  bool granted_ = false;
  AuthorizationReferences references_;
};

}  // namespace norvik
