// Counts the changes that a control notifies of.
#pragma once

#include "src/server/mac/ui/control.h"

namespace norvik {

struct ChangeCounter : ControlObserver {
  int changes = 0;
  Control* last = nullptr;  // the one that changed last
  void controlChanged(Control& control) override {
    ++changes;
    last = &control;
  }
};

}  // namespace norvik
