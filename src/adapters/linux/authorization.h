// The authorization port for a root of one's own: who may act as the administrator is answered by a policy,
// and tools run as real processes with the rights of the host. Asking the system's own service will go here.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

#include "src/adapters/linux/tool_launcher.h"
#include "src/server/mac/platform/authorization.h"

namespace norvik {

class LinuxAuthorization : public AuthorizationService {
 public:
  // Whether the person who is asked shows to be an administrator; may block while it asks.
  using InteractivePolicy = std::function<bool()>;

  // `tools` is borrowed.
  LinuxAuthorization(ToolLauncher& tools, InteractivePolicy policy);

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override;
  // A request without interaction succeeds between the first interactive one that was granted and the end of
  // that grant.
  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override;
  // Takes the right from the reference alone: the grant stands, so that the next silent request has it back.
  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override;
  // kAuthorizationFlagDestroyRights ends the grant, for every reference, where this one ever had part in it.
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override;
  // Refused with errAuthorizationDenied unless the reference holds a right.
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override;

 private:
  struct Reference {
    std::set<std::string, std::less<>> rights;
    bool hadRights = false;
  };
  // A reference is a number in disguise, counted up and never used again, so that one that was freed is known
  // to be invalid.
  using References = std::map<AuthorizationRef, Reference>;

  bool decide(AuthorizationFlags flags);

  ToolLauncher& tools_;
  InteractivePolicy policy_;
  bool granted_ = false;
  std::uintptr_t lastNumber_ = 0;
  References references_;
};

}  // namespace norvik
