// norvikctl get: values alone, for scripts.
#include <nlohmann/json.hpp>
#include <ostream>

#include "commands.h"
#include "nearest.h"
#include "progress.h"
#include "session.h"

namespace norvik {

ExitStatus getSettings(const Context& context, const Words& names) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, Conduct::pretending);
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

}  // namespace norvik
