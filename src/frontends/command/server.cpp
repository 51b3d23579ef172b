// norvikctl start, stop, restart and apply: orders to the server, and what came of them.
#include <nlohmann/json.hpp>
#include <ostream>
#include <thread>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/interruptible_drawing.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/status.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/server/server_order.h"

namespace norvik::command {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kWaitStep{50};

ChangeError noRights() {
  return failure(FailureCode::notAllowed,
                 translated("This needs administrator rights, which were not granted."));
}

// In steps, so that an interruption is noticed.
bool waitForTools(const Context& context, milliseconds limit) {
  for (; limit > milliseconds(0); limit -= kWaitStep) {
    if (context.services.waitForTools(kWaitStep)) return true;
    if (context.services.wasStopped()) throw Interruption();
  }
  return false;
}

OrderedServer orderedServer(const Context& context, Session& session) {
  return {session.pane(),
          session.recording(),
          context.interface,
          context.services.computer,
          [&context](milliseconds limit) { return waitForTools(context, limit); },
          [&context](milliseconds time) {
            std::this_thread::sleep_for(time);
            if (context.services.wasStopped()) throw Interruption();
          }};
}

bool isLaunched(const Effects& effects, const ToolCommand& command) {
  return std::ranges::any_of(effects.launches, [&](const Launch& launch) {
    return launch.tool == command.tool && !launch.arguments.empty() && !launch.refused &&
           launch.arguments.front() == command.arguments[0];
  });
}

// In what state an interrupted order leaves the server. What was launched goes on without this program.
ChangeError interruption(const Effects& effects, bool restarts) {
  const bool runs = nvkd_pid() != -1;
  ChangeError error = failure(FailureCode::interrupted, "");
  if (isLaunched(effects, kStartServer)) {
    error.sentence = runs ? translated("interrupted; the server runs.")
                          : translated("interrupted; the server is still being started.");
    error.advice = runs ? "" : translated("See with \"norvikctl status\" whether it comes up.");
  } else if (isLaunched(effects, kStopServer)) {
    const char* stopping =
        restarts ? english("interrupted; the server is still being stopped, and is not started again.")
                 : english("interrupted; the server is still being stopped.");
    const char* stopped = restarts ? english("interrupted; the server is stopped, and is not started again.")
                                   : english("interrupted; the server is stopped.");
    error.sentence = translated(runs ? stopping : stopped);
    error.advice = restarts ? translated("Start it with \"norvikctl start\".") : "";
  } else if (isLaunched(effects, kApplyConfig)) {
    error.sentence = translated("interrupted; the server is still being told to take up what is stored.");
    error.advice = translated("See with \"norvikctl status\" what is in force.");
  } else {
    error.sentence = translated("interrupted; nothing was ordered.");
  }
  return error;
}

void writeState(const Context& context, NVKServerPrefs& pane, const OrderReport& report) {
  std::vector<TableRow> rows;
  for (const StatusLine& line : statusLines(context, pane, report.inForce)) {
    if (line.key != "lock") rows.push_back({line.label, line.text});
  }
  writeTable(context.out, rows);
}

ExitStatus finishOrder(const Context& context, Session& session, const OrderReport& report) {
  NVKServerPrefs& pane = session.pane();
  if (!context.json) writeState(context, pane, report);
  for (const std::string& line : session.effects().logged) context.complain(line);
  nlohmann::ordered_json fields = statusJson(pane, report.inForce);
  fields["notes"] = report.note.empty() ? std::vector<std::string>() : std::vector{report.note};
  return finish(context.output(), report.change, fields);
}

void writeNote(const Context& context, const std::string& note) {
  if (!context.json && !note.empty()) context.out << note << std::endl;
}

using NeedsRights = std::function<bool(const NVKServerPrefs& pane)>;
using Order = std::function<OrderReport(Session& session, OrderedServer& server)>;

// Opens the lock if the order needs rights and there is a server, and finishes the order even if the terminal
// or the reader goes.
ExitStatus runOrder(const Context& context, const NeedsRights& needsRights, const Order& order,
                    bool restarts = false) {
  Questions questions(context.answers, context.err);
  Progress progress(context.json ? nullptr : context.progress);
  InterruptibleDrawing drawing(progress, context.services.wasStopped);
  Session session(context, questions, drawing, RecordingMode::real);
  const bool mayNeedRights = !installationError(context.services.computer.files);
  if (mayNeedRights && needsRights(session.pane()) && !session.unlock())
    return finish(context.output(), noRights());
  context.services.deferInterruptions();
  try {
    OrderedServer server = orderedServer(context, session);
    const OrderReport report = order(session, server);
    progress.finishLine();
    return finishOrder(context, session, report);
  } catch (const Interruption&) {
    progress.finishLine();
    return finish(context.output(), interruption(session.effects(), restarts));
  }
}

ExitStatus orderServer(const Context& context, ServerOrder which) {
  return runOrder(
      context, [which](const NVKServerPrefs& pane) { return !isFulfilled(which, pane); },
      [&context, which](Session& session, OrderedServer& server) {
        writeNote(context, noteBefore(which, session.pane()));
        return carryOut(which, server);
      },
      which == ServerOrder::restart);
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

ExitStatus takeUpStored(const Context& context, const CommandLine& /*line*/) {
  return runOrder(
      context, [](const NVKServerPrefs& pane) { return pane.m_serverPid != -1; },
      [&context](Session& session, OrderedServer& server) {
        SettingsChange change(session.pane(), session.recording(), context.computer, context.interface,
                              context.services.computer,
                              {context.services.records, context.services.portInUse, server.waitForTools,
                               context.limits.lock, context.limits.tools});
        OrderReport report = takeUp(change, server);
        writeNote(context, report.note);
        return report;
      });
}

}  // namespace norvik::command
