// The sentences.
#include "src/adapters/services/authorization_refusal.h"

namespace norvik {

std::string sentenceOf(AuthorizationRefusal refusal) {
  switch (refusal) {
    case AuthorizationRefusal::none:
      break;
    case AuthorizationRefusal::refused:
      return "The password was wrong, or this person is no administrator.";
    case AuthorizationRefusal::dismissed:
      return "The request for administrator rights was cancelled.";
    case AuthorizationRefusal::noAgent:
      return "Nobody could be asked for a password: this session has no authentication agent. Use a terminal, "
             "or work as root.";
    case AuthorizationRefusal::noService:
      // Each system has its own service.
#ifdef __APPLE__
      return "Administrator rights cannot be asked for: the authorization service does not answer. Work as root.";
#else
      return "Administrator rights cannot be asked for: polkit does not answer. Work as root.";
#endif
  }
  return "";
}

}  // namespace norvik
