// The texts before a row of settings and under it, for every front end that arranges pages. Reads only the
// description.
#pragma once

#include <string>

#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// Whether a control's own label is shown before it; the others show it themselves.
bool isCaptioned(const ControlDescription& control);

// Whether that label is within the row, right before the control: others share the row.
bool isCaptionedWithin(const RowDescription& row, const ControlDescription& control);

// The text before the whole row: its own label, or that of its only control. May be empty. Part of the
// description.
const std::string& captionOf(const RowDescription& row);

// Whether a person may type something wrong into the control, so that it needs space for a note under it.
bool hasNote(const ControlDescription& control);

}  // namespace norvik
