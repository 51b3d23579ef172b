// What is said before and after an order, and the order itself: a click on a button of the pane.
#include "src/frontends/shared/server/server_order.h"

#include <algorithm>

#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"

namespace norvik {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kTakeUpLimit{5'000};
constexpr milliseconds kTakeUpPause{50};

constexpr const char* kLookInLog = english("Look in the system's log for what the server says.");

bool runs(int32_t pid) {
  return pid != -1;
}

bool isStart(const Launch& launch) {
  return launch.tool == PROC_NVKSVC && !launch.arguments.empty() &&
         launch.arguments.front() == kStartServer.arguments[0];
}

// What the server did not do that was ordered; empty where it did.
std::string notDone(ServerOrder order, const OrderReport& report) {
  if (order == ServerOrder::stop) return runs(report.after) ? translated("The server did not stop.") : "";
  if (!runs(report.after)) return translated("The server did not start.");
  // The pane starts the server again only where it has stopped.
  const auto& launches = report.change.effects.launches;
  const bool wasPressed = report.change.applied && order == ServerOrder::restart;
  const bool isStillTheOld = wasPressed && std::ranges::none_of(launches, isStart);
  return isStillTheOld ? translated("The server did not stop, so it was not started again.") : "";
}

// A tool that has not ended or was refused is its own reason; one that failed is the server's.
ChangeError errorAfter(ServerOrder order, OrderReport& report) {
  const auto& commands = report.change.commands;
  ChangeError error = errorOf(commands);
  if (error && error.code != FailureCode::server) return error;
  const auto failed = std::ranges::find_if(
      commands, [](const CommandOutcome& command) { return !command.outcome.succeeded(); });
  const std::string reason = failed != commands.end() ? failureInWords(*failed) : "";
  const std::string missed = notDone(order, report);
  if (missed.empty()) {
    if (!reason.empty()) report.change.warnings.push_back(reason);
    return order == ServerOrder::stop ? ChangeError() : connectionError(report.inForce);
  }
  const std::string late =
      counted("It was given {1} second.", "It was given {1} seconds.", kWaitingDots + kSettlingDots);
  return {FailureCode::server, joinedSentences(missed, reason.empty() ? late : reason), "", "",
          translated(kLookInLog)};
}

// A server that nobody started just now need not have what was stored since. That a program has its port is
// a failure all the same, which a person who orders the start has to learn.
void judgeWhatRanBefore(OrderReport& report) {
  const bool isTaken = std::ranges::any_of(
      report.inForce.services, [](const ServiceInForce& service) { return service.takenBy.has_value(); });
  if (isTaken) return;
  report.change.error = {};
  for (const ServiceInForce& service : report.inForce.services) {
    if (service.differs()) report.change.warnings.push_back(inForceSentence(service));
  }
}

void press(ServerOrder order, OrderedServer& server, OrderReport& report) {
  NVKServerPrefs& pane = server.pane;
  server.recording.forget();
  server.services.tools.forget();
  // Restart is enabled only while the server runs; for a stopped one Start does the same.
  const bool restarts = order == ServerOrder::restart && runs(report.before);
  pane.buttonClicked(restarts ? pane.ib_admin_button_svrRestart : pane.ib_admin_button_svrStart);
  server.waitForTools(server.toolLimit);
  pane.onStateTimer();
  report.change.applied = true;
  report.change.effects = server.recording.effects();
  report.change.commands = outcomesOf(report.change.effects, server.services.tools.outcomes());
}

void look(OrderedServer& server, OrderReport& report) {
  report.after = server.pane.m_serverPid;
  report.inForce = serverInForce(server.pane, server.interface, server.services.ports);
}

}  // namespace

std::optional<ServerOrder> orderOf(const NVKServerPrefs& pane, const Control& button) {
  if (&button == &pane.ib_admin_button_svrRestart) return ServerOrder::restart;
  if (&button != &pane.ib_admin_button_svrStart) return std::nullopt;
  return runs(nvkd_pid()) ? ServerOrder::stop : ServerOrder::start;
}

std::optional<OrderQuestion> questionBefore(ServerOrder order) {
  switch (order) {
    case ServerOrder::start:
      return std::nullopt;
    case ServerOrder::stop:
      return OrderQuestion{
          translated("Stop the server?"),
          translated(
              "Everyone who is connected to this computer is disconnected, and nobody can connect until "
              "the server is started again."),
          {translated("Stop"), translated("Cancel")}};
    case ServerOrder::restart:
      return OrderQuestion{
          translated("Restart the server?"),
          translated(
              "Everyone who is connected to this computer is disconnected, and nobody can connect until "
              "the server has come up again, which takes at least twenty seconds."),
          {translated("Restart"), translated("Cancel")}};
  }
  return std::nullopt;
}

bool isAgreed(ServerOrder order, AlertPanels& panels) {
  const auto question = questionBefore(order);
  if (!question) return true;
  const int answer =
      panels.NSRunAlertPanel(question->title.c_str(), question->message.c_str(), question->buttons[0].c_str(),
                             question->buttons[1].c_str(), nullptr);
  return answer == NSAlertDefaultReturn;
}

ChangeError installationError(SettingsFiles& files) {
  const FileKind kind = files.inspect(PROC_NVKSVC).kind;
  if (kind != FileKind::missing && kind != FileKind::directory) return {};
  return {FailureCode::server, translated("The Norvik server is not installed on this computer."), "", "",
          sentence("Install the server; its program {1} is missing.", {PROC_NVKSVC})};
}

std::array<const Control*, 5> serversOwn(const NVKServerPrefs& pane) {
  return {&pane.ib_admin_button_svrStart, &pane.ib_admin_label_svrDesc, &pane.ib_admin_button_svrRestart,
          &pane.ib_admin_button_dispManager, &pane.ib_admin_button_accManager};
}

std::string noteBefore(ServerOrder order, const NVKServerPrefs& pane) {
  const bool isRunning = runs(pane.m_serverPid);
  if (order == ServerOrder::start && isRunning) return translated("The server is already running.");
  if (order == ServerOrder::stop && !isRunning) return translated("The server is not running.");
  if (order == ServerOrder::restart && !isRunning)
    return translated("The server is not running, so it is only started.");
  return "";
}

bool isFulfilled(ServerOrder order, const NVKServerPrefs& pane) {
  if (order == ServerOrder::restart) return false;
  return runs(pane.m_serverPid) == (order == ServerOrder::start);
}

OrderReport carryOut(ServerOrder order, OrderedServer& server) {
  NVKServerPrefs& pane = server.pane;
  pane.onStateTimer();  // the start button does one thing or the other by what is so now
  OrderReport report;
  report.before = pane.m_serverPid;
  report.note = noteBefore(order, pane);
  const bool fulfilled = isFulfilled(order, pane);
  if (!fulfilled) report.change.error = installationError(server.services.files);
  if (!fulfilled && report.ok() && !pane.authorized()) {
    report.change.error = {FailureCode::notAllowed,
                           translated("This needs administrator rights, which were not granted."), "", "",
                           ""};
  }
  if (!fulfilled && report.ok()) press(order, server, report);
  look(server, report);
  if (report.ok()) report.change.error = errorAfter(order, report);
  if (fulfilled) judgeWhatRanBefore(report);
  return report;
}

OrderReport takeUp(SettingsChange& change, OrderedServer& server) {
  OrderReport report;
  report.before = server.pane.m_serverPid;
  if (!runs(report.before)) {
    report.note = translated("The server is not running; it takes up what is stored when it starts.");
    look(server, report);
    return report;
  }
  report.change.error = installationError(server.services.files);
  if (report.ok()) report.change = change.takeUp();
  server.pane.onStateTimer();
  look(server, report);
  // The tool only tells the server, which then needs a moment.
  for (milliseconds waited{0}; report.ok() && report.inForce.differs() && waited < kTakeUpLimit;
       waited += kTakeUpPause) {
    server.pause(kTakeUpPause);
    look(server, report);
  }
  if (report.ok()) report.change.error = connectionError(report.inForce);
  return report;
}

ChangeError connectionError(const ServerInForce& inForce) {
  const auto found = std::ranges::find_if(inForce.services, [](const ServiceInForce& service) {
    return service.stored.isOn && service.differs();
  });
  if (found == inForce.services.end()) return {};
  const std::string port = std::to_string(found->stored.port);
  const std::string clients = translated(found->title);
  if (found->takenBy) {
    return {FailureCode::server,
            sentence("The server runs, but {1} cannot connect to port {2}, which is taken by {3}.",
                     {clients, port, holderInWords(*found->takenBy)}),
            found->setting, found->outlet,
            sentence("End that program, or give {1} another port; then restart the server.", {clients})};
  }
  const char* pattern =
      found->inForce == InForce::refuses
          ? english(
                "The server runs, but {1} cannot connect to port {2}, where connections are not accepted.")
          : english("The server runs, but {1} cannot connect to port {2}, where the server does not listen.");
  return {FailureCode::server, sentence(pattern, {clients, port}), found->setting, found->outlet,
          translated(kLookInLog)};
}

}  // namespace norvik
