// norvikctl get: only the values, for scripts.
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

ExitStatus getSettings(const Context& context, const CommandLine& line) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::pretending);
  nlohmann::ordered_json values;
  std::string lines;
  for (const std::string& name : line.arguments) {
    const PaneSetting* setting = session.find(name);
    if (setting == nullptr) {
      const std::string near = suggestion(name, session.settingNames());
      return finish(context.output(),
                    failure(FailureCode::usage, sentence("unknown setting \"{1}\".", {name}) + near, name));
    }
    values[name] = jsonOf(setting->typedValue());
    lines += setting->text() + '\n';
  }
  if (!context.json) context.out << lines;
  return finish(context.output(), ChangeReport(), {{"values", values}});
}

}  // namespace norvik::command
