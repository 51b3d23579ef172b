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
                                               const EffectReporter& effects)
    : tools_(tools), files_(files), effects_(effects) {}

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

bool SimulatedAuthorization::holds(AuthorizationRef authorization) const {
  return std::any_of(references_.begin(), references_.end(), [=](const auto& reference) {
    return reinterpret_cast<AuthorizationRef>(reference.get()) == authorization;
  });
}

OSStatus SimulatedAuthorization::AuthorizationCreate(AuthorizationRights, AuthorizationFlags,
                                                     AuthorizationRef& authorization) {
  effects_.report(EffectKind::authorization, "authorization create");
  authorization = nullptr;
  if (!createGranted_) return errAuthorizationDenied;
  references_.push_back(std::make_unique<Reference>(Reference{++lastNumber_}));
  authorization = reinterpret_cast<AuthorizationRef>(references_.back().get());
  return errAuthorizationSuccess;
}

OSStatus SimulatedAuthorization::AuthorizationCopyRights(AuthorizationRef authorization,
                                                         AuthorizationRights rights,
                                                         AuthorizationFlags flags) {
  const bool interactive = (flags & kAuthorizationFlagInteractionAllowed) != 0;
  const bool granted = holds(authorization) && (interactive ? interactiveGranted_ : silentGranted_);
  lastRefusal_ = granted ? AuthorizationRefusal::none : reason_;
  effects_.report(EffectKind::authorization,
                  "authorization copy-rights" + names(flags) + " -> " + (granted ? "granted" : "refused"));
  for (const AuthorizationItem& item : rights) effects_.report(EffectKind::rights, itemLine(item));
  if (!holds(authorization)) return errAuthorizationInvalidRef;
  return granted ? errAuthorizationSuccess : errAuthorizationDenied;
}

OSStatus SimulatedAuthorization::AuthorizationRightRemove(AuthorizationRef authorization,
                                                          std::string_view name) {
  effects_.report(EffectKind::authorization, "authorization right-remove " + quoted(name));
  return holds(authorization) ? errAuthorizationSuccess : errAuthorizationInvalidRef;
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
  const bool refused = !holds(authorization) || refuses(tool, words);
  std::string commandLine = quoted(tool);
  for (const std::string& word : words) commandLine += ' ' + quoted(word);
  effects_.report(EffectKind::launch, "launch " + commandLine + (refused ? " refused" : ""));
  if (!holds(authorization)) return errAuthorizationInvalidRef;
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
