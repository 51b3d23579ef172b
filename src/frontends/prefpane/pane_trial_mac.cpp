// On the Mac no trial is written down, so none can be left.
#include "src/frontends/prefpane/pane_trial.h"

namespace norvik::prefpane {

struct PaneTrial::Parts {};

PaneTrial::PaneTrial(MainView& /*view*/, PaneChanges& /*changes*/, PaneServer& /*server*/,
                     UserState* /*state*/, Platform& /*computer*/) {}

PaneTrial::~PaneTrial() = default;

void PaneTrial::setSeen(bool /*isSeen*/) {}

}  // namespace norvik::prefpane
