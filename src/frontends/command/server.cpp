// norvikctl start, stop, restart and apply: orders to the server, and what came of them.
#include "src/frontends/command/server.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <thread>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/interruptible_drawing.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/status.h"
#include "src/frontends/command/table.h"
#include "src/frontends/command/trial.h"
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

// What an order came to, and how it ended where it was on trial.
struct Ordered {
  OrderReport report;
  std::optional<TrialEnd> trial = {};
};

ExitStatus finishOrder(const Context& context, Session& session, const Ordered& ordered) {
  const OrderReport& report = ordered.report;
  NVKServerPrefs& pane = session.pane();
  if (!context.json) writeState(context, pane, report);
  for (const std::string& line : session.effects().logged) context.complain(line);
  nlohmann::ordered_json fields = statusJson(pane, report.inForce);
  fields["notes"] = report.note.empty() ? std::vector<std::string>() : std::vector{report.note};
  if (ordered.trial) {
    if (!context.json && report.ok()) context.out << sentenceOf(*ordered.trial) << '\n';
    fields["trial"] = trialJson(*ordered.trial, {});
  }
  const ExitStatus status = finish(context.output(), report.change, fields);
  const bool isTakenBack = ordered.trial && *ordered.trial != TrialEnd::kept;
  return status == kExitOk && isTakenBack ? kExitTakenBack : status;
}

void writeNote(const Context& context, const std::string& note) {
  if (!context.json && !note.empty()) context.out << note << std::endl;
}

using NeedsRights = std::function<bool(const NVKServerPrefs& pane)>;
using Order = std::function<Ordered(Session& session, OrderedServer& server)>;

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
    const Ordered ordered = order(session, server);
    progress.finishLine();
    return finishOrder(context, session, ordered);
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
        return Ordered{carryOut(which, server)};
      },
      which == ServerOrder::restart);
}

// The server runs. Whatever arrives, it is stopped first and started again then.
Ordered stopOnTrial(const Context& context, OrderedServer& server, std::chrono::seconds length) {
  Trials trials(context.services.state, "norvikctl");
  Ordered ordered;
  ordered.report.change.error = trials.begin({}, StopsServer::yes, length);
  if (!ordered.report.ok()) return ordered;
  ordered.report = carryOut(ServerOrder::stop, server);
  if (ordered.report.ok()) ordered.trial = awaitEnd(context, length);
  if (ordered.trial != TrialEnd::kept) {
    const ChangeError error = ordered.report.change.error;
    ordered.report = carryOut(ServerOrder::start, server);
    if (ordered.report.after == -1) trials.leave();
    if (error) ordered.report.change.error = error;
  }
  const std::string warning = trials.end();
  if (!warning.empty()) ordered.report.change.warnings.push_back(warning);
  return ordered;
}

ExitStatus tryStop(const Context& given, std::chrono::seconds length) {
  Context context = given;
  context.services.wasStopped = [] { return false; };
  return runOrder(
      context, [](const NVKServerPrefs& pane) { return !isFulfilled(ServerOrder::stop, pane); },
      [&](Session& session, OrderedServer& server) {
        writeNote(context, noteBefore(ServerOrder::stop, session.pane()));
        if (isFulfilled(ServerOrder::stop, session.pane()))
          return Ordered{carryOut(ServerOrder::stop, server)};
        return stopOnTrial(context, server, length);
      });
}

}  // namespace

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

ExitStatus startServer(const Context& context, const CommandLine& /*line*/) {
  return orderServer(context, ServerOrder::start);
}

ExitStatus stopServer(const Context& context, const CommandLine& line) {
  if (line.trial) return tryStop(context, *line.trial);
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
        return Ordered{std::move(report)};
      });
}

}  // namespace norvik::command
