// Which labels are shown where.
#include "src/frontends/shared/interface/captions.h"

namespace norvik {

bool isCaptioned(const ControlDescription& control) {
  return control.kind == ControlKind::slider || control.kind == ControlKind::popUp ||
         control.kind == ControlKind::textField;
}

bool isCaptionedWithin(const RowDescription& row, const ControlDescription& control) {
  return row.controls.size() > 1 && isCaptioned(control);
}

const std::string& captionOf(const RowDescription& row) {
  const bool alone = row.controls.size() == 1 && isCaptioned(row.controls[0]);
  return row.label.empty() && alone ? row.controls[0].label : row.label;
}

bool hasNote(const ControlDescription& control) {
  return control.kind == ControlKind::textField && !control.displayOnly;
}

}  // namespace norvik
