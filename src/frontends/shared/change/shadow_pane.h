// A second pane beside the one that a person edits: it has loaded the files of now, shows nothing and changes
// nothing. What the files hold is read from its fields, and what Apply would do is found out by pressing its
// button. There is one main pane in a process, so while a shadow lives the other one must not be used.
#pragma once

#include <memory>

#include "src/frontends/shared/change/recording_platform.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

class ShadowPane {
 public:
  // Loads the files on `computer`, which stays the installed platform's computer afterwards. Where
  // `unlocked`, the shadow's lock only seems to open. Borrows both.
  ShadowPane(Platform& computer, const InterfaceDescription& interface, bool unlocked);
  ~ShadowPane();
  ShadowPane(const ShadowPane&) = delete;
  ShadowPane& operator=(const ShadowPane&) = delete;

  NVKServerPrefs& pane();
  // What it believes to have done since it was made.
  const Effects& effects() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace norvik
