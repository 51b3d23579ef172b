// Platform interface to the system's authorization service: rights obtained from an administrator, and tools
// run with them. Called on the main thread only.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "src/server/mac/platform/files.h"

namespace norvik {

using OSStatus = int32_t;
inline constexpr OSStatus errAuthorizationSuccess = 0;
inline constexpr OSStatus errAuthorizationInvalidRef = -60002;
inline constexpr OSStatus errAuthorizationDenied = -60005;
inline constexpr OSStatus errAuthorizationCanceled = -60006;               // by the person who was asked
inline constexpr OSStatus errAuthorizationInteractionNotAllowed = -60007;  // nobody may be asked
inline constexpr OSStatus errAuthorizationToolExecuteFailure = -60031;

// An authorization as the service knows it; opaque to the pane. Null is none.
using AuthorizationRef = struct AuthorizationOpaque*;

using AuthorizationFlags = uint32_t;
inline constexpr AuthorizationFlags kAuthorizationFlagDefaults = 0;
inline constexpr AuthorizationFlags kAuthorizationFlagInteractionAllowed = 1u << 0;
inline constexpr AuthorizationFlags kAuthorizationFlagExtendRights = 1u << 1;
inline constexpr AuthorizationFlags kAuthorizationFlagDestroyRights = 1u << 3;

struct AuthorizationItem {
  std::string_view name;
  std::string_view value;  // bytes, no terminator
  uint32_t flags = 0;
};

using AuthorizationRights = std::span<const AuthorizationItem>;

class AuthorizationService {
 public:
  virtual ~AuthorizationService() = default;

  // Makes an authorization that holds no rights yet and stores it in `authorization`, which the caller frees
  // with AuthorizationFree. On failure returns an error and stores null. Never asks a person.
  virtual OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                                       AuthorizationRef& authorization) = 0;

  // Asks that `authorization` be given all of `rights`. With kAuthorizationFlagInteractionAllowed a person
  // may be asked and the call blocks until they have answered; without it the call returns at once. A refusal
  // is an error, whichever: errAuthorizationDenied, errAuthorizationCanceled by the person, or
  // errAuthorizationInteractionNotAllowed where only asking could have helped. A null authorization gives
  // errAuthorizationInvalidRef. Rights may end by themselves: what a password has given ends, by the policy
  // of the Mac, after 300 seconds, and a request without interaction is then refused.
  virtual OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                           AuthorizationFlags flags) = 0;

  // Asks that the named right be removed from the computer's policy database, which no policy allows: gives
  // errAuthorizationDenied and changes nothing, neither there nor for `authorization`. An invalid
  // authorization gives errAuthorizationInvalidRef.
  virtual OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) = 0;

  // Frees `authorization`, which must not be used again. With kAuthorizationFlagDestroyRights its rights end
  // for every process that shares them.
  virtual OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) = 0;

  // Starts the tool at `path` as the super-user with the null-terminated vector `arguments` (without the
  // tool's own name) and returns without waiting for its end. Where the rights have ended by themselves, a
  // person may be asked for them again and the call may block meanwhile. Tools take effect in the order in
  // which they were started: each begins when those before it have ended, however long they take, and whether
  // or not they succeeded. The Mac's service keeps no such order, nor waits for any tool: an adapter does. Of
  // a tool that had to wait for its turn, a failure to start may show only in its outcome.
  // `communicationsPipe`, if not null, receives a stream that reads the tool's standard output, which the
  // caller closes through the Files interface, or null if the service returns none; after an error it is null
  // or as it was. A tool
  // that is read only reports and changes nothing: none waits for it, and it waits no longer than a moment
  // for those before it, so that reading ends even if one of them never does. Any error means that the tool
  // was not started.
  virtual OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                                      AuthorizationFlags flags, const char* const* arguments,
                                                      FileRef* communicationsPipe) = 0;
};

}  // namespace norvik
