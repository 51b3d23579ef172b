// norvikctl displays and access: the two management tools.
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/server/server_order.h"

namespace norvik::command {

namespace {

// A tool with a window stays open for as long as a person wants it; only one that ends at once is waited for.
constexpr std::chrono::seconds kManagerLimit{1};

// A tool that still runs has opened its window.
ChangeError errorOfManager(const std::vector<CommandOutcome>& commands) {
  if (commands.empty() || commands.back().launch.refused) {
    return failure(FailureCode::notAllowed, translated("the tool could not be opened."));
  }
  const CommandOutcome& manager = commands.back();
  if (!manager.outcome.ended() || manager.outcome.succeeded()) return {};
  return failure(FailureCode::server,
                 sentence("the tool could not be opened: {1}", {failureInWords(manager)}));
}

ExitStatus openTool(const Context& context, Control NVKServerPrefs::*button) {
  Questions questions(context.answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::real);
  ChangeReport report;
  report.error = installationError(context.services.computer.files);
  if (!report.ok()) return finish(context.output(), report);
  if (!session.unlock()) {
    return finish(context.output(),
                  failure(FailureCode::notAllowed,
                          translated("This needs administrator rights, which were not granted.")));
  }
  context.services.computer.tools.forget();
  session.recording().forget();
  session.click(session.pane().*button);
  context.services.waitForTools(kManagerLimit);
  report.commands = outcomesOf(session.effects(), context.services.computer.tools.outcomes());
  report.error = errorOfManager(report.commands);
  if (report.ok() && !context.json) {
    context.out << sentence("Opened with {1}", {norvik::commandLine(report.commands.back().launch)}) << '\n';
  }
  for (const std::string& line : session.effects().logged) context.complain(line);
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
