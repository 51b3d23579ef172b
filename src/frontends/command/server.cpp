// norvikctl start, stop and restart: the two buttons of the server page, pressed only where they do what was
// ordered.
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/status.h"
#include "src/frontends/command/table.h"

namespace norvik::command {

namespace {

constexpr std::chrono::seconds kServerToolLimit{30};

enum class ServerOrder { start, stop, restart };

bool runs(int32_t pid) {
  return pid != -1;
}

bool isFulfilled(ServerOrder order, int32_t pid) {
  return order == ServerOrder::start ? runs(pid) : order == ServerOrder::stop && !runs(pid);
}

// What the person should know beforehand; null where all is as expected.
const char* noteBefore(ServerOrder order, int32_t pid) {
  if (order == ServerOrder::start && runs(pid)) return "The server is already running.";
  if (order == ServerOrder::stop && !runs(pid)) return "The server is not running.";
  if (order == ServerOrder::restart && !runs(pid)) return "The server is not running, so it is only started.";
  return nullptr;
}

ChangeError resultOf(ServerOrder order, int32_t before, int32_t after) {
  if (order == ServerOrder::stop) {
    return runs(after) ? failure(FailureCode::server, "the server did not stop.") : ChangeError();
  }
  if (!runs(after)) return failure(FailureCode::server, "the server did not start.");
  if (order == ServerOrder::restart && after == before) {
    return failure(FailureCode::server, "the server did not stop, so it was not started again.");
  }
  return {};
}

void writeState(const Context& context, NVKServerPrefs& pane) {
  if (context.json) return;
  std::vector<TableRow> rows;
  for (const StatusLine& line : statusLines(context, pane)) {
    if (line.key != "lock") rows.push_back({line.label, line.text});
  }
  writeTable(context.out, rows);
}

void complainOfLog(const Context& context, const Effects& effects) {
  for (const std::string& line : effects.logged) context.complain(line);
}

// Restart is enabled only while the server runs; for a stopped one Start does the same.
ChangeError pressButton(const Context& context, Session& session, Progress& progress, ServerOrder order) {
  NVKServerPrefs& pane = session.pane();
  const int32_t before = pane.m_serverPid;
  const bool restarts = order == ServerOrder::restart && runs(before);
  session.click(restarts ? pane.ib_admin_button_svrRestart : pane.ib_admin_button_svrStart);
  progress.finishLine();
  context.services.waitForTools(kServerToolLimit);
  pane.onStateTimer();
  return resultOf(order, before, pane.m_serverPid);
}

ExitStatus orderServer(const Context& context, ServerOrder order) {
  Questions questions(context.answers, context.err);
  Progress progress(context.json ? nullptr : context.progress);
  Session session(context, questions, progress, RecordingMode::real);
  const int32_t pid = session.pane().m_serverPid;
  const bool fulfilled = isFulfilled(order, pid);
  if (!fulfilled && !session.unlock()) {
    return finish(context.output(), failure(FailureCode::notAllowed,
                                            "this needs administrator rights, which were not granted."));
  }
  const char* note = noteBefore(order, pid);
  if (note != nullptr && !context.json) context.out << note << std::endl;
  ChangeReport report;
  if (!fulfilled) report.error = pressButton(context, session, progress, order);
  report.applied = !fulfilled;
  for (const Launch& launch : session.effects().launches) {
    if (!launch.reports) report.commands.push_back({launch, {}});
  }
  writeState(context, session.pane());
  complainOfLog(context, session.effects());
  return finish(context.output(), report, statusJson(session.pane()));
}

}  // namespace

ExitStatus startServer(const Context& context, const CommandLine& /*line*/) {
  return orderServer(context, ServerOrder::start);
}

ExitStatus stopServer(const Context& context, const CommandLine& /*line*/) {
  return orderServer(context, ServerOrder::stop);
}

ExitStatus restartServer(const Context& context, const CommandLine& /*line*/) {
  return orderServer(context, ServerOrder::restart);
}

}  // namespace norvik::command
