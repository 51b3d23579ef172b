// A session over the same computer, on which every property list is missing.
#include "src/frontends/command/defaults.h"

#include "src/frontends/command/fixed_lists.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

std::map<std::string, int64_t> defaultValues(const Context& context) {
  FixedLists lists(context.computer.propertyLists, std::nullopt);
  Platform empty = platformWith(context.computer, lists);
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(empty, context.interface, questions, progress, RecordingMode::pretending);
  std::map<std::string, int64_t> values;
  for (const PaneSetting& setting : session.settings()) {
    if (const auto value = setting.value()) values[setting.name()] = *value;
  }
  return values;
}

}  // namespace norvik::command
