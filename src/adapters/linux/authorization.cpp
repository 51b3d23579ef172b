// The references, and the one grant that they share.
#include "src/adapters/linux/authorization.h"

#include "src/adapters/posix/files.h"

namespace norvik {

std::vector<std::string> argumentWords(const char* const* arguments) {
  std::vector<std::string> result;
  while (arguments != nullptr && *arguments != nullptr) result.emplace_back(*arguments++);
  return result;
}

LinuxAuthorization::LinuxAuthorization(ToolLauncher& tools, InteractivePolicy policy)
    : tools_(tools), policy_(std::move(policy)) {}

OSStatus LinuxAuthorization::AuthorizationCreate(AuthorizationRights, AuthorizationFlags,
                                                 AuthorizationRef& authorization) {
  authorization = references_.make();
  return errAuthorizationSuccess;
}

bool LinuxAuthorization::decide(AuthorizationFlags flags) {
  const bool mayAsk = (flags & kAuthorizationFlagInteractionAllowed) != 0;
  if (!granted_ && mayAsk && policy_) granted_ = policy_();
  return granted_;
}

OSStatus LinuxAuthorization::AuthorizationCopyRights(AuthorizationRef authorization,
                                                     AuthorizationRights rights, AuthorizationFlags flags) {
  AuthorizationReference* found = references_.find(authorization);
  if (found == nullptr) return errAuthorizationInvalidRef;
  if (!decide(flags)) return errAuthorizationDenied;
  AuthorizationReferences::grant(*found, rights, (flags & kAuthorizationFlagInteractionAllowed) != 0);
  return errAuthorizationSuccess;
}

OSStatus LinuxAuthorization::AuthorizationRightRemove(AuthorizationRef authorization, std::string_view) {
  return references_.removeRight(authorization);
}

OSStatus LinuxAuthorization::AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
  AuthorizationReference* found = references_.find(authorization);
  if (found == nullptr) return errAuthorizationInvalidRef;
  const bool endsGrant = (flags & kAuthorizationFlagDestroyRights) != 0 && found->hadRights;
  references_.free(authorization);
  if (!endsGrant) return errAuthorizationSuccess;
  granted_ = false;
  references_.clearRights();
  return errAuthorizationSuccess;
}

OSStatus LinuxAuthorization::AuthorizationExecuteWithPrivileges(AuthorizationRef authorization,
                                                                const char* path, AuthorizationFlags,
                                                                const char* const* arguments,
                                                                FileRef* communicationsPipe) {
  if (communicationsPipe != nullptr) *communicationsPipe = nullptr;
  AuthorizationReference* found = references_.find(authorization);
  if (found == nullptr) return errAuthorizationInvalidRef;
  if (found->rights.empty()) return errAuthorizationDenied;
  Pipe pipe = communicationsPipe != nullptr ? makePipe() : Pipe{};
  if (communicationsPipe != nullptr && !pipe.reading) return errAuthorizationToolExecuteFailure;
  if (!tools_.start(path, argumentWords(arguments), pipe.writing)) return errAuthorizationToolExecuteFailure;
  if (communicationsPipe != nullptr) *communicationsPipe = readingStream(std::move(pipe.reading));
  return errAuthorizationSuccess;
}

}  // namespace norvik
