// Which kinds of effects a scenario shows.
#pragma once

#include <set>
#include <string_view>

#include "src/adapters/simulated/effects.h"

namespace norvik::scenario {

class Trace {
 public:
  // Shows what is easily seen from outside the pane's process.
  Trace();

  bool shows(EffectKind kind) const { return shown_.contains(kind); }
  // Shows or hides the kind with that name; throws Malformed for an unknown one.
  void set(std::string_view kind, bool shown);

 private:
  std::set<EffectKind> shown_;
};

}  // namespace norvik::scenario
