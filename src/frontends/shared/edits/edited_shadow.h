// A shadow of a pane with its settings by name, for what has to be asked of a pane that nobody edits: which
// settings there are, and which need others.
#pragma once

#include "src/frontends/shared/change/shadow_pane.h"
#include "src/frontends/shared/edits/edited_pane.h"

namespace norvik {

class EditedShadow {
 public:
  // As ShadowPane, and its state timer has ticked once. Borrows both.
  EditedShadow(Platform& computer, const InterfaceDescription& interface)
      : shadow_(computer, interface, false), edited_(awake(shadow_.pane()), interface) {}

  EditedPane& edited() { return edited_; }

 private:
  static NVKServerPrefs& awake(NVKServerPrefs& pane) {
    pane.onStateTimer();
    return pane;
  }

  ShadowPane shadow_;
  EditedPane edited_;
};

}  // namespace norvik
