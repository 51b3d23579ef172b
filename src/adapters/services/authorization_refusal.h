// Why administrator rights were not granted, for the front end's words. The pane only learns that they were
// not.
#pragma once

#include <string>

namespace norvik {

enum class AuthorizationRefusal {
  none,       // granted, or never asked for
  refused,    // this person may not, or could not prove who they are
  dismissed,  // the person who was asked did not want to
  noAgent,    // nobody could be asked: no program that asks for passwords runs in this session
  noService,  // the system has no service that decides, or it does not answer
};

class AuthorizationRefusals {
 public:
  virtual ~AuthorizationRefusals() = default;
  // Of the last request for rights; none where the computer does not say why. Main thread; does not block.
  virtual AuthorizationRefusal lastRefusal() const = 0;
};

// A sentence for a person, with what to do; empty for none.
std::string sentenceOf(AuthorizationRefusal refusal);

}  // namespace norvik
