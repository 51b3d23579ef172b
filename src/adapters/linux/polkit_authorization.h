// Administrator rights on the real system: polkit says who has them, and the helper runs tools with them. The
// super-user has them without being asked, and needs no polkit.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "src/adapters/linux/authorization_references.h"
#include "src/adapters/linux/privileged_lines.h"
#include "src/adapters/linux/system_bus.h"
#include "src/adapters/linux/text_agent.h"
#include "src/adapters/services/authorization_refusal.h"
#include "src/server/mac/platform/authorization.h"

namespace norvik {

class PolkitAuthorization : public AuthorizationService, public AuthorizationRefusals {
 public:
  struct Options {
    bool isSuperUser = false;  // whether the program runs as the super-user
    bool textAgent = false;    // whether passwords may be asked for at the terminal
  };

  // `bus` and `lines` are borrowed.
  PolkitAuthorization(SystemBus& bus, PrivilegedLines& lines, Options options);
  ~PolkitAuthorization() override;

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override;
  // Asks polkit at every call. One action covers all rights. Any error counts as a refusal.
  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override;
  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override;
  // kAuthorizationFlagDestroyRights has polkit forget what it kept for this program.
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override;
  // Refused with errAuthorizationDenied unless the reference holds a right and the helper's own question to
  // polkit is granted. polkit may ask a person again where the rights were obtained by asking.
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override;

  AuthorizationRefusal lastRefusal() const override { return lastRefusal_; }

 private:
  AuthorizationRefusal check(bool mayAsk);
  AuthorizationRefusal readAnswer(sd_bus_message* reply, bool mayAsk);
  void revoke();

  SystemBus& bus_;
  PrivilegedLines& lines_;
  Options options_;
  std::unique_ptr<TextAgent> agent_;
  AuthorizationRefusal lastRefusal_ = AuthorizationRefusal::none;
  std::set<std::string> kept_;  // by polkit, for this program
  bool isGivenUp_ = false;      // until a person is asked again, although polkit still keeps something
  AuthorizationReferences references_;
};

}  // namespace norvik
