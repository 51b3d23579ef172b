// A shadow over the same computer, on which every property list is missing.
#include "src/frontends/shared/edits/defaults.h"

#include "src/frontends/shared/edits/edited_shadow.h"
#include "src/frontends/shared/edits/fixed_lists.h"

namespace norvik {

std::map<std::string, int64_t> defaultValues(Platform& computer, const InterfaceDescription& interface) {
  FixedLists lists(computer.propertyLists, std::nullopt);
  Platform empty = platformWith(computer, lists);
  EditedShadow shadow(empty, interface);
  std::map<std::string, int64_t> values;
  for (const PaneSetting& setting : shadow.edited().settings()) {
    if (const auto value = setting.value()) values[setting.name()] = *value;
  }
  return values;
}

}  // namespace norvik
