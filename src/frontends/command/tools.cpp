// norvikctl displays and access: the two management tools.
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

namespace {

// A tool with a window stays open for as long as a person wants it; only one that ends at once is waited for.
constexpr std::chrono::seconds kManagerLimit{1};

// The last launch; null where the pane did not try to launch the tool.
const Launch* launchOf(const Effects& effects) {
  if (effects.launches.empty() || effects.launches.back().reports) return nullptr;
  return &effects.launches.back();
}

ExitStatus openTool(const Context& context, Control NVKServerPrefs::*button) {
  Questions questions(context.answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::real);
  if (!session.unlock()) {
    return finish(context.output(), failure(FailureCode::notAllowed,
                                            "this needs administrator rights, which were not granted."));
  }
  session.click(session.pane().*button);
  const Launch* launch = launchOf(session.effects());
  if (launch == nullptr || launch->refused) {
    for (const std::string& line : session.effects().logged) context.complain(line);
    return finish(context.output(), failure(FailureCode::notAllowed, "the tool could not be opened."));
  }
  context.services.waitForTools(kManagerLimit);
  if (!context.json) context.out << "Opened with " << commandLine(*launch) << '\n';
  ChangeReport report;
  report.commands.push_back({*launch, {}});
  return finish(context.output(), report);
}

}  // namespace

ExitStatus openDisplayManager(const Context& context, const CommandLine& /*line*/) {
  return openTool(context, &NVKServerPrefs::ib_admin_button_dispManager);
}

ExitStatus openAccessManager(const Context& context, const CommandLine& /*line*/) {
  return openTool(context, &NVKServerPrefs::ib_admin_button_accManager);
}

}  // namespace norvik::command
