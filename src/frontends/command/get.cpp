// norvikctl get: values alone, for scripts.
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/commands.h"
#include "src/frontends/command/nearest.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

ExitStatus getSettings(const Context& context, const Words& names) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, Mode::pretending);
  nlohmann::ordered_json values;
  std::string lines;
  for (const std::string& name : names) {
    const PaneSetting* setting = session.find(name);
    if (setting == nullptr) {
      context.complain("no setting is named \"" + name + "\"." + suggestion(name, session.settingNames()));
      return kExitUsage;
    }
    values[name] = setting->json();
    lines += setting->text() + '\n';
  }
  if (context.json) {
    context.print(values);
  } else {
    context.out << lines;
  }
  return kExitOk;
}

}  // namespace norvik::command
