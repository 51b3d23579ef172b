// What stands in front of a row of settings and under it, for every host that lays out pages. Reads the
// description alone.
#pragma once

#include <string>

#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// Whether a control's own label stands in front of it; the others carry it.
bool isCaptioned(const ControlDescription& control);

// Whether that label stands within the row, right before the control: others share the row.
bool isCaptionedWithin(const RowDescription& row, const ControlDescription& control);

// What stands in front of the whole row: its own label, or that of its only control. May be empty. Part of
// the description.
const std::string& captionOf(const RowDescription& row);

// Whether what a person types into the control may be wrong, so that it has room for a note under it.
bool hasNote(const ControlDescription& control);

}  // namespace norvik
