// A map from numbers to rights.
#include "src/adapters/linux/authorization_references.h"

namespace norvik {

AuthorizationRef AuthorizationReferences::make() {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): never dereferenced
  const auto made = reinterpret_cast<AuthorizationRef>(++lastNumber_);
  references_.emplace(made, AuthorizationReference{});
  return made;
}

AuthorizationReference* AuthorizationReferences::find(AuthorizationRef reference) {
  const auto found = references_.find(reference);
  return found != references_.end() ? &found->second : nullptr;
}

void AuthorizationReferences::grant(AuthorizationReference& reference, AuthorizationRights rights,
                                    bool mayAsk) {
  for (const AuthorizationItem& right : rights) reference.rights.emplace(right.name);
  reference.hadRights = true;
  reference.byAsking = reference.byAsking || mayAsk;
}

OSStatus AuthorizationReferences::removeRight(AuthorizationRef reference) {
  return find(reference) != nullptr ? errAuthorizationDenied : errAuthorizationInvalidRef;
}

void AuthorizationReferences::clearRights() {
  for (auto& [reference, held] : references_) held.rights.clear();
}

}  // namespace norvik
