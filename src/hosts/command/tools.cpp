// norvikctl displays and access: open the two management tools.
#include <nlohmann/json.hpp>
#include <ostream>

#include "commands.h"
#include "progress.h"
#include "report.h"
#include "session.h"

namespace norvik {

namespace {

// A tool with a window stays open for as long as a person wants it; only one that ends at once is waited for.
constexpr std::chrono::seconds kToolLimit{1};

// The last launch, which is the tool's where the lock was open.
const Launch* launchOf(const Deeds& deeds) {
  if (deeds.launches.empty() || deeds.launches.back().reports) return nullptr;
  return &deeds.launches.back();
}

}  // namespace

ExitStatus openTool(const Context& context, ManagementTool tool) {
  Questions questions(context.answers, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, Conduct::real);
  if (!session.unlock()) {
    context.complain("this needs administrator rights, which were not granted.");
    return kExitNoPermission;
  }
  NVKServerPrefs& pane = session.pane();
  session.click(tool == ManagementTool::displays ? pane.ib_admin_button_dispManager
                                                 : pane.ib_admin_button_accManager);
  const Launch* launch = launchOf(session.deeds());
  if (launch == nullptr || launch->refused) {
    for (const std::string& line : session.deeds().logged) context.complain(line);
    context.complain("the tool could not be opened.");
    return kExitNoPermission;
  }
  context.services.waitForTools(kToolLimit);
  if (context.json) {
    context.print({{"commands", commandsJson(session.deeds())}});
  } else {
    context.out << "Opened with " << commandLine(*launch) << '\n';
  }
  return kExitOk;
}

}  // namespace norvik
