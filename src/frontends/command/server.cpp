// norvikctl start, stop and restart: the two buttons of the server page, pressed only where they mean what
// was ordered.
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/commands.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/status.h"
#include "src/frontends/command/table.h"

namespace norvik::command {

namespace {

constexpr std::chrono::seconds kToolLimit{30};

bool runs(int32_t pid) {
  return pid != -1;
}

// Nothing to do, or nothing that can be done; null where the button is to be pressed.
const char* needless(ServerOrder order, int32_t pid) {
  if (order == ServerOrder::start && runs(pid)) return "The server is started already.";
  if (order == ServerOrder::stop && !runs(pid)) return "The server is stopped already.";
  return nullptr;
}

Error judge(ServerOrder order, int32_t before, int32_t after) {
  if (order == ServerOrder::stop) {
    return runs(after) ? Error{kExitUnavailable, "the server did not stop."} : Error();
  }
  if (!runs(after)) return {kExitUnavailable, "the server did not start."};
  if (order == ServerOrder::restart && after == before) {
    return {kExitUnavailable, "the server did not stop, so it was not started again."};
  }
  return {};
}

void writeState(const Context& context, NVKServerPrefs& pane) {
  if (context.json) {
    context.print(statusJson(pane));
    return;
  }
  std::vector<TableRow> rows;
  for (const StatusLine& line : statusLines(context, pane)) {
    if (line.key != "lock") rows.push_back({line.label, line.text});
  }
  writeTable(context.out, rows);
}

void complainOfLog(const Context& context, const Effects& effects) {
  for (const std::string& line : effects.logged) context.complain(line);
}

Error obey(const Context& context, Session& session, Progress& progress, ServerOrder order) {
  NVKServerPrefs& pane = session.pane();
  const int32_t before = pane.m_serverPid;
  Control& button =
      order == ServerOrder::restart ? pane.ib_admin_button_svrRestart : pane.ib_admin_button_svrStart;
  if (!button.isEnabled()) {
    return {kExitUnavailable,
            "the server does not run, so there is nothing to restart. Try: norvikctl start"};
  }
  session.click(button);
  progress.finishLine();
  context.services.waitForTools(kToolLimit);
  pane.onStateTimer();
  return judge(order, before, pane.m_serverPid);
}

}  // namespace

ExitStatus orderServer(const Context& context, ServerOrder order) {
  Questions questions(context.answers, context.err);
  Progress progress(context.json ? nullptr : &context.out);
  Session session(context, questions, progress, Mode::real);
  const char* reason = needless(order, session.pane().m_serverPid);
  if (reason == nullptr && !session.unlock()) {
    context.complain("this needs administrator rights, which were not granted.");
    return kExitNoPermission;
  }
  if (reason != nullptr && !context.json) context.out << reason << '\n';
  const Error error = reason == nullptr ? obey(context, session, progress, order) : Error();
  writeState(context, session.pane());
  complainOfLog(context, session.effects());
  if (error) context.complain(error.sentence);
  return error.status;
}

}  // namespace norvik::command
