// The references, and the one grant that they share.
#include "src/adapters/linux/authorization.h"

#include "src/adapters/linux/files.h"

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
  // NOLINTNEXTLINE(performance-no-int-to-ptr): never dereferenced
  authorization = reinterpret_cast<AuthorizationRef>(++lastNumber_);
  references_.emplace(authorization, Reference{});
  return errAuthorizationSuccess;
}

bool LinuxAuthorization::decide(AuthorizationFlags flags) {
  const bool mayAsk = (flags & kAuthorizationFlagInteractionAllowed) != 0;
  if (!granted_ && mayAsk && policy_) granted_ = policy_();
  return granted_;
}

OSStatus LinuxAuthorization::AuthorizationCopyRights(AuthorizationRef authorization,
                                                     AuthorizationRights rights, AuthorizationFlags flags) {
  const auto found = references_.find(authorization);
  if (found == references_.end()) return errAuthorizationInvalidRef;
  if (!decide(flags)) return errAuthorizationDenied;
  for (const AuthorizationItem& right : rights) found->second.rights.emplace(right.name);
  found->second.hadRights = true;
  return errAuthorizationSuccess;
}

OSStatus LinuxAuthorization::AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) {
  const auto found = references_.find(authorization);
  if (found == references_.end()) return errAuthorizationInvalidRef;
  const auto right = found->second.rights.find(name);
  if (right != found->second.rights.end()) found->second.rights.erase(right);
  return errAuthorizationSuccess;
}

OSStatus LinuxAuthorization::AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
  const auto found = references_.find(authorization);
  if (found == references_.end()) return errAuthorizationInvalidRef;
  const bool endsGrant = (flags & kAuthorizationFlagDestroyRights) != 0 && found->second.hadRights;
  references_.erase(found);
  if (!endsGrant) return errAuthorizationSuccess;
  granted_ = false;
  for (auto& [other, reference] : references_) reference.rights.clear();
  return errAuthorizationSuccess;
}

OSStatus LinuxAuthorization::AuthorizationExecuteWithPrivileges(AuthorizationRef authorization,
                                                                const char* path, AuthorizationFlags,
                                                                const char* const* arguments,
                                                                FileRef* communicationsPipe) {
  if (communicationsPipe != nullptr) *communicationsPipe = nullptr;
  const auto found = references_.find(authorization);
  if (found == references_.end()) return errAuthorizationInvalidRef;
  if (found->second.rights.empty()) return errAuthorizationDenied;
  Pipe pipe = communicationsPipe != nullptr ? makePipe() : Pipe{};
  if (communicationsPipe != nullptr && !pipe.reading) return errAuthorizationToolExecuteFailure;
  if (!tools_.start(path, argumentWords(arguments), pipe.writing)) return errAuthorizationToolExecuteFailure;
  if (communicationsPipe != nullptr) *communicationsPipe = readingStream(std::move(pipe.reading));
  return errAuthorizationSuccess;
}

}  // namespace norvik
