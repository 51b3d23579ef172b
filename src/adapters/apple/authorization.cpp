// Calls the service, with C strings and lengths as it wants them.
#include "src/adapters/apple/authorization.h"

#include <Security/Authorization.h>
#include <sys/socket.h>

#include <string>

#include "src/adapters/apple/system_call.h"

namespace norvik {

namespace {

using ExecuteWithPrivileges = OSStatus(::AuthorizationRef, const char*, ::AuthorizationFlags, char* const*,
                                       std::FILE**);

::AuthorizationRef core(AuthorizationRef authorization) {
  return reinterpret_cast<::AuthorizationRef>(authorization);
}

// The rights as the service wants them. Points into strings of its own and into the given rights.
class RightSet {
 public:
  explicit RightSet(AuthorizationRights rights) {
    names_.reserve(rights.size());  // a string that moves would take its bytes along
    for (const AuthorizationItem& right : rights) {
      names_.emplace_back(right.name);
      void* value = right.value.empty() ? nullptr : const_cast<char*>(right.value.data());
      items_.push_back({names_.back().c_str(), right.value.size(), value, right.flags});
    }
    set_ = {static_cast<UInt32>(items_.size()), items_.empty() ? nullptr : items_.data()};
  }
  RightSet(const RightSet&) = delete;
  RightSet& operator=(const RightSet&) = delete;

  // Null for no rights.
  const ::AuthorizationItemSet* get() const { return items_.empty() ? nullptr : &set_; }

 private:
  std::vector<std::string> names_;
  std::vector<::AuthorizationItem> items_;
  ::AuthorizationItemSet set_{};
};

AuthorizationRefusal refusalOf(OSStatus status) {
  switch (status) {
    case errAuthorizationSuccess:
      return AuthorizationRefusal::none;
    case errAuthorizationDenied:
      return AuthorizationRefusal::refused;
    case errAuthorizationCanceled:
      return AuthorizationRefusal::dismissed;
    case errAuthorizationInteractionNotAllowed:
      return AuthorizationRefusal::noAgent;
    default:
      return AuthorizationRefusal::noService;
  }
}

std::vector<std::string> words(const char* const* arguments) {
  std::vector<std::string> result;
  while (arguments != nullptr && *arguments != nullptr) result.emplace_back(*arguments++);
  return result;
}

// The call is deprecated, has no successor in one call, and may be taken away.
OSStatus execute(::AuthorizationRef authorization, const std::string& path,
                 const std::vector<std::string>& arguments, std::FILE** pipe) {
  auto* call = systemCall<ExecuteWithPrivileges>("AuthorizationExecuteWithPrivileges");
  if (call == nullptr) return errAuthorizationToolExecuteFailure;
  std::vector<char*> vector;
  vector.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) vector.push_back(const_cast<char*>(argument.c_str()));
  vector.push_back(nullptr);
  return call(authorization, path.c_str(), kAuthorizationFlagDefaults, vector.data(), pipe);
}

}  // namespace

AppleAuthorization::~AppleAuthorization() {
  tools_.finish();
  for (const AuthorizationRef authorization : references_)
    ::AuthorizationFree(core(authorization), kAuthorizationFlagDefaults);
}

OSStatus AppleAuthorization::AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                                                 AuthorizationRef& authorization) {
  const RightSet wanted(rights);
  ::AuthorizationRef made = nullptr;
  const OSStatus status = ::AuthorizationCreate(wanted.get(), nullptr, flags, &made);
  const bool isMade = status == errAuthorizationSuccess && made != nullptr;
  authorization = isMade ? reinterpret_cast<AuthorizationRef>(const_cast<AuthorizationOpaqueRef*>(made))
                         : AuthorizationRef{nullptr};
  if (isMade) references_.insert(authorization);
  return status;
}

OSStatus AppleAuthorization::AuthorizationCopyRights(AuthorizationRef authorization,
                                                     AuthorizationRights rights, AuthorizationFlags flags) {
  if (!isValid(authorization)) return errAuthorizationInvalidRef;
  const RightSet wanted(rights);
  const OSStatus status =
      ::AuthorizationCopyRights(core(authorization), wanted.get(), nullptr, flags, nullptr);
  lastRefusal_ = refusalOf(status);
  return status;
}

OSStatus AppleAuthorization::AuthorizationRightRemove(AuthorizationRef authorization, std::string_view) {
  return isValid(authorization) ? errAuthorizationDenied : errAuthorizationInvalidRef;
}

OSStatus AppleAuthorization::AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
  if (!isValid(authorization)) return errAuthorizationInvalidRef;
  tools_.finish();
  references_.erase(authorization);
  return ::AuthorizationFree(core(authorization), flags);
}

OSStatus AppleAuthorization::AuthorizationExecuteWithPrivileges(AuthorizationRef authorization,
                                                                const char* path, AuthorizationFlags,
                                                                const char* const* arguments,
                                                                FileRef* communicationsPipe) {
  if (communicationsPipe != nullptr) *communicationsPipe = nullptr;
  if (!isValid(authorization)) return errAuthorizationInvalidRef;
  PrivilegedTool tool{path, words(arguments), {}};
  tool.start = [reference = core(authorization), program = root_.onDisk(path),
                own = tool.arguments](std::FILE** pipe) { return execute(reference, program, own, pipe); };
  if (communicationsPipe == nullptr) return tools_.launch(std::move(tool));
  // The service leaves the caller's variable as it was where it fails.
  std::FILE* pipe = nullptr;
  const OSStatus status = tools_.launchAndRead(tool, pipe);
  if (status != errAuthorizationSuccess || pipe == nullptr) return status;
  // The stream goes both ways. Nothing is ever written, so a tool that reads finds the end at once.
  ::shutdown(::fileno(pipe), SHUT_WR);
  *communicationsPipe = reinterpret_cast<FileRef>(pipe);
  return status;
}

}  // namespace norvik
