// Decides requests as a test has set, and starts the tools.
#include "src/adapters/simulated/authorization.h"

#include <algorithm>

#include "src/server/mac/text/escape.h"

namespace norvik {

namespace {

struct FlagName {
  AuthorizationFlags flag;
  std::string_view name;
};

// In the order in which a line names them.
constexpr FlagName kFlagNames[] = {
    {kAuthorizationFlagExtendRights, "ExtendRights"},
    {kAuthorizationFlagInteractionAllowed, "InteractionAllowed"},
    {kAuthorizationFlagDestroyRights, "DestroyRights"},
};

std::string names(AuthorizationFlags flags) {
  std::string line;
  for (const FlagName& flag : kFlagNames) {
    if ((flags & flag.flag) != 0) line += ' ' + std::string(flag.name);
  }
  return line;
}

std::string itemLine(const AuthorizationItem& item) {
  return "right " + quoted(item.name) + " flags=" + std::to_string(item.flags) +
         " value=" + quoted(item.value);
}

}  // namespace

SimulatedAuthorization::SimulatedAuthorization(Tools& tools, SimulatedFiles& files,
                                               const SimulatedClock& clock, const EffectReporter& effects)
    : tools_(tools), files_(files), clock_(clock), effects_(effects) {}

SimulatedAuthorization::~SimulatedAuthorization() = default;

void SimulatedAuthorization::refuse(const std::string& tool,
                                    const std::optional<std::string>& firstArgument) {
  refused_[tool].insert(firstArgument);
}

bool SimulatedAuthorization::refuses(const std::string& tool, const Tools::Arguments& arguments) const {
  const auto refused = refused_.find(tool);
  if (refused == refused_.end()) return false;
  const RefusedArguments& which = refused->second;
  return which.contains(std::nullopt) || (!arguments.empty() && which.contains(arguments[0]));
}

std::map<AuthorizationRef, std::string> SimulatedAuthorization::references() const {
  std::map<AuthorizationRef, std::string> named;
  for (const auto& reference : references_) {
    named.emplace(reinterpret_cast<AuthorizationRef>(reference.get()),
                  "authorization " + std::to_string(reference->number));
  }
  return named;
}

SimulatedAuthorization::Reference* SimulatedAuthorization::find(AuthorizationRef authorization) const {
  const auto found = std::find_if(references_.begin(), references_.end(), [=](const auto& reference) {
    return reinterpret_cast<AuthorizationRef>(reference.get()) == authorization;
  });
  return found != references_.end() ? found->get() : nullptr;
}

bool SimulatedAuthorization::isFresh(const Reference& reference) const {
  if (!passwordHolds_ || !reference.askedAt) return false;
  return clock_.microseconds() - *reference.askedAt < std::chrono::microseconds(*passwordHolds_).count();
}

bool SimulatedAuthorization::isGranted(Reference& reference, bool interactive) {
  if (!interactive) return silentGranted_ || isFresh(reference);
  if (interactiveGranted_) reference.askedAt = clock_.microseconds();
  return interactiveGranted_;
}

bool SimulatedAuthorization::mayLaunch(Reference& reference) {
  if (!passwordHolds_ || !reference.askedAt || isGranted(reference, false)) return true;
  const bool granted = isGranted(reference, true);
  effects_.report(EffectKind::authorization,
                  std::string("authorization ask again -> ") + (granted ? "granted" : "refused"));
  return granted;
}

OSStatus SimulatedAuthorization::AuthorizationCreate(AuthorizationRights, AuthorizationFlags,
                                                     AuthorizationRef& authorization) {
  effects_.report(EffectKind::authorization, "authorization create");
  authorization = nullptr;
  if (!createGranted_) return errAuthorizationDenied;
  references_.push_back(std::make_unique<Reference>(Reference{++lastNumber_, std::nullopt}));
  authorization = reinterpret_cast<AuthorizationRef>(references_.back().get());
  return errAuthorizationSuccess;
}

OSStatus SimulatedAuthorization::AuthorizationCopyRights(AuthorizationRef authorization,
                                                         AuthorizationRights rights,
                                                         AuthorizationFlags flags) {
  const bool interactive = (flags & kAuthorizationFlagInteractionAllowed) != 0;
  Reference* reference = find(authorization);
  const bool granted = reference != nullptr && isGranted(*reference, interactive);
  effects_.report(EffectKind::authorization,
                  "authorization copy-rights" + names(flags) + " -> " + (granted ? "granted" : "refused"));
  for (const AuthorizationItem& item : rights) effects_.report(EffectKind::rights, itemLine(item));
  if (reference == nullptr) return errAuthorizationInvalidRef;
  if (granted) return errAuthorizationSuccess;
  return interactive ? errAuthorizationDenied : errAuthorizationInteractionNotAllowed;
}

OSStatus SimulatedAuthorization::AuthorizationRightRemove(AuthorizationRef authorization,
                                                          std::string_view name) {
  effects_.report(EffectKind::authorization, "authorization right-remove " + quoted(name));
  return holds(authorization) ? errAuthorizationDenied : errAuthorizationInvalidRef;
}

OSStatus SimulatedAuthorization::AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
  effects_.report(EffectKind::authorization, "authorization free" + names(flags));
  if (!holds(authorization)) return errAuthorizationInvalidRef;
  std::erase_if(references_, [=](const auto& reference) {
    return reinterpret_cast<AuthorizationRef>(reference.get()) == authorization;
  });
  return errAuthorizationSuccess;
}

OSStatus SimulatedAuthorization::AuthorizationExecuteWithPrivileges(AuthorizationRef authorization,
                                                                    const char* path, AuthorizationFlags,
                                                                    const char* const* arguments,
                                                                    FileRef* communicationsPipe) {
  if (communicationsPipe != nullptr) *communicationsPipe = nullptr;
  const std::string tool = path;
  Tools::Arguments words;
  for (; *arguments != nullptr; ++arguments) words.emplace_back(*arguments);
  Reference* reference = find(authorization);
  const bool denied = reference != nullptr && !mayLaunch(*reference);
  const bool refused = reference == nullptr || denied || refuses(tool, words);
  std::string commandLine = quoted(tool);
  for (const std::string& word : words) commandLine += ' ' + quoted(word);
  effects_.report(EffectKind::launch, "launch " + commandLine + (refused ? " refused" : ""));
  if (reference == nullptr) return errAuthorizationInvalidRef;
  if (denied) return errAuthorizationDenied;
  if (refused) return errAuthorizationToolExecuteFailure;
  if (communicationsPipe == nullptr) {
    tools_.launch(tool, words);
    return errAuthorizationSuccess;
  }
  std::string output = tools_.launchAndRead(tool, words);
  if (!withoutPipe_.contains(tool)) *communicationsPipe = files_.openPipe(commandLine, std::move(output));
  return errAuthorizationSuccess;
}

}  // namespace norvik
