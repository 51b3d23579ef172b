// The references, and the questions to polkit. The subject is this program as the bus knows it.
#include "src/adapters/linux/polkit_authorization.h"

#include <chrono>
#include <utility>

#include "src/adapters/linux/authorization.h"
#include "src/adapters/linux/helper_interface.h"
#include "src/adapters/posix/files.h"

namespace norvik {

namespace {

constexpr std::chrono::microseconds kLongestPolkitCheck = std::chrono::seconds(25);
constexpr std::chrono::microseconds kLongestPolkitInteraction = std::chrono::minutes(5);

BusMessage checkCall(SystemBus& bus, bool mayAsk) {
  BusMessage call = bus.newCall(kPolkitName, kPolkitPath, kPolkitInterface, "CheckAuthorization");
  const char* self = nullptr;
  const bool isFilled =
      call && sd_bus_get_unique_name(bus.connection(), &self) >= 0 &&
      sd_bus_message_append(call.get(), "(sa{sv})sa{ss}us", "system-bus-name", 1, "name", "s", self,
                            kUnlockAction, 0, mayAsk ? kPolkitMayAsk : 0, "") >= 0;
  if (!isFilled) call.reset();
  return call;
}

// What polkit's answer says beyond yes and no.
std::map<std::string, std::string> readDetails(sd_bus_message* reply) {
  std::map<std::string, std::string> details;
  const char* key = nullptr;
  const char* value = nullptr;
  if (sd_bus_message_enter_container(reply, 'a', "{ss}") <= 0) return details;
  while (sd_bus_message_read(reply, "{ss}", &key, &value) > 0) details[key] = value;
  return details;
}

}  // namespace

PolkitAuthorization::PolkitAuthorization(SystemBus& bus, PrivilegedLines& lines, Options options)
    : bus_(bus), lines_(lines), options_(options) {}

PolkitAuthorization::~PolkitAuthorization() = default;

OSStatus PolkitAuthorization::AuthorizationCreate(AuthorizationRights, AuthorizationFlags,
                                                  AuthorizationRef& authorization) {
  authorization = references_.make();
  return errAuthorizationSuccess;
}

AuthorizationRefusal PolkitAuthorization::readAnswer(sd_bus_message* reply, bool mayAsk) {
  int isAuthorized = 0;
  int isChallenge = 0;
  if (sd_bus_message_enter_container(reply, 'r', "bba{ss}") <= 0 ||
      sd_bus_message_read(reply, "bb", &isAuthorized, &isChallenge) <= 0)
    return AuthorizationRefusal::noService;
  const std::map<std::string, std::string> details = readDetails(reply);
  if (const auto kept = details.find("polkit.temporary_authorization_id"); kept != details.end())
    kept_.insert(kept->second);
  if (isAuthorized == 1) return AuthorizationRefusal::none;
  if (details.contains("polkit.dismissed")) return AuthorizationRefusal::dismissed;
  // Somebody would have to be asked, and nobody was, although that was allowed.
  return isChallenge == 1 && mayAsk ? AuthorizationRefusal::noAgent : AuthorizationRefusal::refused;
}

AuthorizationRefusal PolkitAuthorization::check(bool mayAsk) {
  if (options_.isSuperUser) return AuthorizationRefusal::none;
  if (isGivenUp_ && !mayAsk) return AuthorizationRefusal::refused;
  if (mayAsk && options_.textAgent && !agent_) agent_ = TextAgent::start();
  const BusMessage call = checkCall(bus_, mayAsk);
  const BusReply reply = bus_.call(call, mayAsk ? kLongestPolkitInteraction : kLongestPolkitCheck);
  return reply ? readAnswer(reply.message.get(), mayAsk) : AuthorizationRefusal::noService;
}

OSStatus PolkitAuthorization::AuthorizationCopyRights(AuthorizationRef authorization,
                                                      AuthorizationRights rights, AuthorizationFlags flags) {
  AuthorizationReference* found = references_.find(authorization);
  if (found == nullptr) return errAuthorizationInvalidRef;
  const bool mayAsk = (flags & kAuthorizationFlagInteractionAllowed) != 0;
  lastRefusal_ = check(mayAsk);
  if (lastRefusal_ != AuthorizationRefusal::none) return errAuthorizationDenied;
  AuthorizationReferences::grant(*found, rights, mayAsk);
  isGivenUp_ = false;
  return errAuthorizationSuccess;
}

OSStatus PolkitAuthorization::AuthorizationRightRemove(AuthorizationRef authorization, std::string_view) {
  return references_.removeRight(authorization);
}

// polkit revokes for a session. What it keeps for this program alone, because the program's own text agent
// asked, it forgets when the program ends; until then this program does without it.
void PolkitAuthorization::revoke() {
  for (const std::string& id : std::exchange(kept_, {})) {
    const BusMessage call =
        bus_.newCall(kPolkitName, kPolkitPath, kPolkitInterface, "RevokeTemporaryAuthorizationById");
    const bool isRevoked = call && sd_bus_message_append(call.get(), "s", id.c_str()) >= 0 &&
                           bus_.call(call, kLongestPolkitCheck);
    isGivenUp_ = isGivenUp_ || !isRevoked;
  }
}

OSStatus PolkitAuthorization::AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
  if (!references_.free(authorization)) return errAuthorizationInvalidRef;
  if ((flags & kAuthorizationFlagDestroyRights) == 0) return errAuthorizationSuccess;
  revoke();
  references_.clearRights();
  return errAuthorizationSuccess;
}

OSStatus PolkitAuthorization::AuthorizationExecuteWithPrivileges(AuthorizationRef authorization,
                                                                 const char* path, AuthorizationFlags,
                                                                 const char* const* arguments,
                                                                 FileRef* communicationsPipe) {
  if (communicationsPipe != nullptr) *communicationsPipe = nullptr;
  AuthorizationReference* found = references_.find(authorization);
  if (found == nullptr) return errAuthorizationInvalidRef;
  if (found->rights.empty()) return errAuthorizationDenied;
  Descriptor output;
  const PrivilegedLines::Answer answer = lines_.run(path, argumentWords(arguments), found->byAsking,
                                                    communicationsPipe != nullptr ? &output : nullptr);
  if (answer == PrivilegedLines::Answer::refused) return errAuthorizationDenied;
  if (answer != PrivilegedLines::Answer::launched) return errAuthorizationToolExecuteFailure;
  if (communicationsPipe != nullptr) *communicationsPipe = readingStream(std::move(output));
  return errAuthorizationSuccess;
}

}  // namespace norvik
