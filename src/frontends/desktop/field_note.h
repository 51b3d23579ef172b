// The note under a field that a person types into: what is wrong with the text, and whether Apply would
// refuse it.
#pragma once

#include <QString>

#include "src/frontends/shared/checks/port_check.h"
#include "src/frontends/shared/interface/window_texts.h"

namespace norvik::desktop {

struct FieldNote {
  QString words;  // empty where all is well
  MessageKind kind = MessageKind::failure;
};

// The note of a service's port; none while nobody can edit it, and for other fields.
FieldNote portFieldNote(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                        const Control& field, const PortInUse& inUse);

}  // namespace norvik::desktop
