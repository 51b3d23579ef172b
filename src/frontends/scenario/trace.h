// Which kinds of effects a scenario shows.
#pragma once

#include <set>
#include <string_view>

#include "src/adapters/simulated/effects.h"

namespace norvik::scenario {

class Trace {
 public:
  // Shows what can be seen from outside the pane's process and without looking closely.
  Trace();

  bool shows(EffectKind kind) const { return shown_.contains(kind); }
  // Shows or hides the kind of that name; throws Malformed for an unknown one.
  void set(std::string_view kind, bool shown);

 private:
  std::set<EffectKind> shown_;
};

}  // namespace norvik::scenario
