// A session over the same computer, on which every property list is missing.
#include "src/frontends/command/defaults.h"

#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

namespace {

class NoPropertyLists : public PropertyListFiles {
 public:
  explicit NoPropertyLists(PropertyListFiles& lists) : lists_(lists) {}

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& /*path*/) override {
    return std::nullopt;
  }
  bool writeToFile(const PropertyList& /*dictionary*/, const std::string& /*path*/) override { return false; }
  std::string stringByExpandingTildeInPath(std::string_view path) override {
    return lists_.stringByExpandingTildeInPath(path);
  }

 private:
  PropertyListFiles& lists_;
};

Platform platformWith(Platform& computer, PropertyListFiles& lists) {
  return {computer.application,    computer.alerts,  computer.workspace,
          computer.notifications,  computer.drawing, computer.runLoop,
          computer.authorization,  computer.files,   lists,
          computer.processManager, computer.posix,   computer.host,
          computer.systemVersion,  computer.bundles, computer.log,
          computer.assertions};
}

}  // namespace

std::map<std::string, int64_t> defaultValues(const Context& context) {
  NoPropertyLists lists(context.computer.propertyLists);
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
