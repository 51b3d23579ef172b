// The references of an authorization service: which were made and not freed yet, and the rights that each
// holds.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "src/server/mac/platform/authorization.h"

namespace norvik {

struct AuthorizationReference {
  std::set<std::string, std::less<>> rights;
  bool hadRights = false;  // at any time
  bool byAsking = false;   // a person could be asked when they were given
};

class AuthorizationReferences {
 public:
  // A new reference without rights. It is really a number, which is never used again, so that a freed one is
  // known to be invalid.
  AuthorizationRef make();
  // Null for a reference that was never made or was freed. Valid until it is freed.
  AuthorizationReference* find(AuthorizationRef reference);
  // Gives the reference the rights.
  static void grant(AuthorizationReference& reference, AuthorizationRights rights, bool mayAsk);
  // As AuthorizationRightRemove.
  OSStatus removeRight(AuthorizationRef reference);
  // False for an invalid reference.
  bool free(AuthorizationRef reference) { return references_.erase(reference) > 0; }
  // Every reference loses its rights and stays valid.
  void clearRights();

 private:
  std::uintptr_t lastNumber_ = 0;
  std::map<AuthorizationRef, AuthorizationReference> references_;
};

}  // namespace norvik
