// The authorization service of the simulated computer: which requests are granted, and which tools it
// launches.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/effects.h"
#include "src/adapters/simulated/files.h"
#include "src/adapters/simulated/tools.h"
#include "src/server/mac/platform/authorization.h"

namespace norvik {

class SimulatedAuthorization : public AuthorizationService {
 public:
  SimulatedAuthorization(Tools& tools, SimulatedFiles& files, const SimulatedClock& clock,
                         const EffectReporter& effects);
  ~SimulatedAuthorization() override;

  // The result of a request without (with) interaction, and whether a reference can be made.
  void setSilentGranted(bool granted) { silentGranted_ = granted; }
  void setInteractiveGranted(bool granted) { interactiveGranted_ = granted; }
  void setCreateGranted(bool granted) { createGranted_ = granted; }
  // How long a password holds for the reference that asked for it. Until then its requests without
  // interaction are granted too; afterwards a launch asks again, which is answered like a request with
  // interaction. Nothing: a password holds for every launch, and for no request.
  void setPasswordHolds(std::optional<std::chrono::seconds> time) { passwordHolds_ = time; }
  // Launches of the tool are refused, with any arguments or only with that first one.
  void refuse(const std::string& tool, const std::optional<std::string>& firstArgument);
  // Launches of the tool are accepted again, whatever was refused.
  void accept(const std::string& tool) { refused_.erase(tool); }
  // Launches of the tool return no pipe.
  void withholdPipe(const std::string& tool) { withoutPipe_.insert(tool); }

  // The references that were made and not freed yet, with their names: `authorization 1` is the first made.
  std::map<AuthorizationRef, std::string> references() const;

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override;
  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override;
  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override;
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override;
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override;

 private:
  struct Reference {
    int number;
    std::optional<int64_t> askedAt;  // when a password was last given, on the clock
  };
  // The refused first arguments of a tool; an entry without one refuses all.
  using RefusedArguments = std::set<std::optional<std::string>>;

  bool refuses(const std::string& tool, const Tools::Arguments& arguments) const;
  Reference* find(AuthorizationRef authorization) const;
  bool holds(AuthorizationRef authorization) const { return find(authorization) != nullptr; }
  // Whether a password that was given for the reference still holds.
  bool isFresh(const Reference& reference) const;
  bool isGranted(Reference& reference, bool interactive);
  // Whether the reference may launch, for which a person may have to be asked again.
  bool mayLaunch(Reference& reference);

  Tools& tools_;
  SimulatedFiles& files_;
  const SimulatedClock& clock_;
  const EffectReporter& effects_;
  bool silentGranted_ = false;
  bool interactiveGranted_ = true;
  bool createGranted_ = true;
  std::optional<std::chrono::seconds> passwordHolds_;
  std::map<std::string, RefusedArguments> refused_;
  std::set<std::string> withoutPipe_;
  int lastNumber_ = 0;
  std::vector<std::unique_ptr<Reference>> references_;
};

}  // namespace norvik
