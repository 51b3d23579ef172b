// The authorization service. A password holds for 300 seconds, for the reference that asked. A privileged
// tool is started at once, whatever was started before it, and nobody waits for it; of every two tools the
// first takes effect after the second. The pipe is one socket both ways.
#include <Security/Authorization.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

#include "tests/adapters/apple/doubles/doubles.h"

struct AuthorizationOpaqueRef {
  bool isFreed = false;
  bool wasAsked = false;
  double askedAt = 0;
};

namespace norvik::doubles {

namespace {

enum : OSStatus {
  kSuccess = 0,
  kInvalidRef = -60002,
  kDenied = -60005,
  kCanceled = -60006,
  kInteractionNotAllowed = -60007,
  kInvalidFlags = -60011,
  kToolExecuteFailure = -60031,
};
constexpr AuthorizationFlags kInteractionAllowed = 1;
constexpr double kPasswordHolds = 300;  // seconds

std::vector<std::unique_ptr<AuthorizationOpaqueRef>> references;
int launches = 0;

AuthorizationOpaqueRef* find(AuthorizationRef reference) {
  if (reference == nullptr) return nullptr;
  auto* found = const_cast<AuthorizationOpaqueRef*>(reference);
  if (found->isFreed) violate("a freed authorization is used");
  return found->isFreed ? nullptr : found;
}

bool isFresh(const AuthorizationOpaqueRef& reference) {
  return reference.wasAsked && mac().seconds - reference.askedAt < kPasswordHolds;
}

bool ask(AuthorizationOpaqueRef& reference) {
  ++mac().passwordsAsked;
  if (!mac().isAdministrator) return false;
  reference.wasAsked = true;
  reference.askedAt = mac().seconds;
  return true;
}

std::string itemsOf(const AuthorizationRights* rights) {
  std::string line;
  for (UInt32 i = 0; rights != nullptr && i < rights->count; ++i) {
    const AuthorizationItem& item = rights->items[i];
    if ((item.valueLength == 0) != (item.value == nullptr)) violate("a value without its length");
    const std::string value(static_cast<const char*>(item.value), item.valueLength);
    line += std::string(" ") + item.name + "=" + value;
    if (item.flags != 0) violate("an item with flags");
  }
  return line;
}

// What the child does: it is the tool from the start, as the service's own program becomes it.
[[noreturn]] void becomeTool(const char* path, char* const* arguments, int socket, bool isLate) {
  const int nowhere = ::open("/dev/null", O_RDWR);
  ::dup2(socket >= 0 ? socket : nowhere, STDIN_FILENO);
  ::dup2(socket >= 0 ? socket : nowhere, STDOUT_FILENO);
  ::setenv("NORVIK_ROOT", mac().root.c_str(), 1);
  ::setenv("__AUTHORIZATION", "auth 5", 1);
  const std::string late = isLate ? "sleep 0.1; exec \"$0\" \"$@\"" : "exec \"$0\" \"$@\"";
  std::vector<const char*> words{"/bin/sh", "-c", late.c_str(), path};
  for (; *arguments != nullptr; ++arguments) words.push_back(*arguments);
  words.push_back(nullptr);
  ::execv("/bin/sh", const_cast<char* const*>(words.data()));
  ::_exit(127);
}

std::string lineOf(const char* path, char* const* arguments) {
  const std::string whole = path;
  const std::string& root = mac().root;
  std::string line = whole.substr(!root.empty() && whole.rfind(root, 0) == 0 ? root.size() : 0);
  for (; *arguments != nullptr; ++arguments) line += std::string(" ") + *arguments;
  return line;
}

}  // namespace

std::vector<std::string> leakedAuthorizations() {
  std::vector<std::string> leaked;
  for (const auto& reference : references) {
    if (!reference->isFreed) leaked.emplace_back("an authorization was not freed");
  }
  return leaked;
}

void forgetAuthorizations() {
  references.clear();
}

}  // namespace norvik::doubles

using namespace norvik::doubles;

extern "C" {

OSStatus AuthorizationCreate(const AuthorizationRights* rights, const AuthorizationEnvironment* environment,
                             AuthorizationFlags flags, AuthorizationRef* authorization) {
  record("AuthorizationCreate rights:" + itemsOf(rights) + " flags: " + std::to_string(flags));
  if (environment != nullptr) violate("an environment");
  references.push_back(std::make_unique<AuthorizationOpaqueRef>());
  *authorization = references.back().get();
  return kSuccess;
}

OSStatus AuthorizationCopyRights(AuthorizationRef authorization, const AuthorizationRights* rights,
                                 const AuthorizationEnvironment* environment, AuthorizationFlags flags,
                                 AuthorizationRights** authorizedRights) {
  record("AuthorizationCopyRights" + itemsOf(rights) + " flags: " + std::to_string(flags));
  const std::lock_guard lock(guard());
  if (environment != nullptr || authorizedRights != nullptr) violate("what nobody would release");
  AuthorizationOpaqueRef* reference = find(authorization);
  if (reference == nullptr) return kInvalidRef;
  if (isFresh(*reference)) return kSuccess;
  if ((flags & kInteractionAllowed) == 0) return kInteractionNotAllowed;
  return ask(*reference) ? kSuccess : kDenied;
}

// The adapter may not call it: where the policy allows it, it changes the computer.
OSStatus AuthorizationRightRemove(AuthorizationRef, const char*) {
  violate("AuthorizationRightRemove");
  return kDenied;
}

OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
  record("AuthorizationFree flags: " + std::to_string(flags));
  const std::lock_guard lock(guard());
  AuthorizationOpaqueRef* reference = find(authorization);
  if (reference == nullptr) return kInvalidRef;
  reference->isFreed = true;
  return kSuccess;
}

// On any thread. Where it fails, the pipe is as it was.
OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* pathToTool,
                                            AuthorizationFlags options, char* const* arguments,
                                            std::FILE** communicationsPipe) {
  const std::lock_guard lock(guard());
  record("AuthorizationExecuteWithPrivileges " + lineOf(pathToTool, arguments) +
         (communicationsPipe != nullptr ? " | pipe" : ""));
  AuthorizationOpaqueRef* reference = find(authorization);
  if (reference == nullptr) return kInvalidRef;
  if (options != 0) return kInvalidFlags;
  if (!isFresh(*reference) && !ask(*reference)) return kCanceled;
  if (::access(pathToTool, X_OK) != 0) return kToolExecuteFailure;
  int ends[2] = {-1, -1};
  if (communicationsPipe != nullptr && ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
    return kToolExecuteFailure;
  const bool isLate = ++launches % 2 == 1;
  const pid_t child = ::fork();
  if (child == 0) becomeTool(pathToTool, arguments, ends[1], isLate);
  if (child < 0) return kToolExecuteFailure;
  mac().launched.insert(child);
  if (communicationsPipe != nullptr) {
    ::close(ends[1]);
    *communicationsPipe = ::fdopen(ends[0], "r+");
  }
  return kSuccess;
}

}  // extern "C"
