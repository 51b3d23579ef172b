// A finding as a note.
#include "src/frontends/desktop/field_note.h"

#include "src/frontends/desktop/binding.h"

namespace norvik::desktop {

FieldNote portFieldNote(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                        const Control& field, const PortInUse& inUse) {
  const auto finding = field.isEnabled() ? checkPort(pane, interface, field, inUse) : std::nullopt;
  if (!finding) return {};
  return {text(finding->sentence), finding->blocks ? MessageKind::failure : MessageKind::warning};
}

}  // namespace norvik::desktop
