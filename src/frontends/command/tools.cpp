// norvikctl displays and access: open the two management tools.
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/commands.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/report.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

namespace {

// A tool with a window stays open for as long as a person wants it; only one that ends at once is waited for.
constexpr std::chrono::seconds kToolLimit{1};

// The last launch, which is the tool's where the lock was open.
const Launch* launchOf(const Effects& effects) {
  if (effects.launches.empty() || effects.launches.back().reports) return nullptr;
  return &effects.launches.back();
}

}  // namespace

ExitStatus openTool(const Context& context, ManagementTool tool) {
  Questions questions(context.answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, Mode::real);
  if (!session.unlock()) {
    context.complain("this needs administrator rights, which were not granted.");
    return kExitNoPermission;
  }
  NVKServerPrefs& pane = session.pane();
  session.click(tool == ManagementTool::displays ? pane.ib_admin_button_dispManager
                                                 : pane.ib_admin_button_accManager);
  const Launch* launch = launchOf(session.effects());
  if (launch == nullptr || launch->refused) {
    for (const std::string& line : session.effects().logged) context.complain(line);
    context.complain("the tool could not be opened.");
    return kExitNoPermission;
  }
  context.services.waitForTools(kToolLimit);
  if (context.json) {
    context.print({{"commands", commandsJson(session.effects())}});
  } else {
    context.out << "Opened with " << commandLine(*launch) << '\n';
  }
  return kExitOk;
}

}  // namespace norvik::command
