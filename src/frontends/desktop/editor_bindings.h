// The bindings of the controls that hold a setting.
#pragma once

#include <memory>

#include "src/frontends/desktop/binding.h"

namespace norvik::desktop {

// For a check box, radio button, slider, pop-up or text field; null for any other kind.
std::unique_ptr<Binding> makeEditorBinding(NVKServerPrefs& pane, Control& control,
                                           const ControlDescription& description, QWidget* parent);

}  // namespace norvik::desktop
