// norvikctl status and is-running: the server and the pane at this moment. Labels come from the interface
// description, texts from the pane.
#include "src/frontends/command/status.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/metrics.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/interface/address_text.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/pane_texts.h"
#include "src/frontends/shared/server/client_services.h"
#include "src/frontends/shared/server/server_order.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

// The pane's sentences have line breaks in them.
std::string onOneLine(const std::string& text) {
  std::string line;
  for (const char c : text) {
    if (c != '\n') {
      line += c;
    } else if (!line.ends_with(' ')) {
      line += ' ';
    }
  }
  return line;
}

std::string labelOf(const InterfaceDescription& interface, std::string_view outlet) {
  const ControlDescription* control = interface.find(outlet);
  return control != nullptr ? control->label : std::string(outlet);
}

constexpr const char* kTakeUpHint = english("\"norvikctl apply\" makes the server take up what is stored.");

// Why clients cannot connect as the pane's sentence says; empty where they can, as far as is known.
std::string contradiction(const ServiceInForce& service) {
  if (!service.differs()) return "";
  const std::string taken = takenSentence(service);
  return joinedSentences(inForceSentence(service), taken);
}

std::string serviceText(NVKServerPrefs& pane, const ClientService& service, const ServiceInForce& inForce) {
  const std::string text = contradiction(inForce);
  return text.empty() ? onOneLine(paneText((pane.*service.address).stringValue())) : text;
}

Json orNull(const auto& optional) {
  return optional ? Json(*optional) : Json(nullptr);
}

Json portJson(const ServicePort& service) {
  return {{"on", service.isOn}, {"port", service.port}};
}

Json holderJson(const std::optional<PortHolder>& holder) {
  if (!holder) return nullptr;
  return {{"pid", orNull(holder->pid)},
          {"program", holder->program.empty() ? Json(nullptr) : Json(holder->program)}};
}

// The words for scripts, in the order of the values.
constexpr const char* kSeen[] = {"not-known", "stopped", "listens", "elsewhere",
                                 "silent",    "accepts", "refuses"};

Json inForceJson(const ServiceInForce& service) {
  return {{"typed", portJson(service.typed)},
          {"stored", portJson(service.stored)},
          {"seen", kSeen[static_cast<std::size_t>(service.inForce)]},
          {"ports", service.ports},
          {"differs", service.differs()},
          {"takenBy", holderJson(service.takenBy)}};
}

// A program that reads metrics takes no object of JSON.
ExitStatus refuseBothForms(const Context& context) {
  return finish(context.output(), failure(FailureCode::usage, sentence("{1} and {2} exclude each other.",
                                                                       {"--json", "--prometheus"})));
}

ExitStatus showMetrics(const Context& context, Session& session, const ServerInForce& inForce) {
  const ReachQuestion question = reachQuestion(session.pane(), context.interface, context.services.computer);
  const auto reach = climb(question, context.services.computer.network);
  writeMetrics(context.out, metricsOf(context, session.pane(), inForce, reach));
  return finish(context.output(), ChangeReport());
}

}  // namespace

bool canBeTakenUp(const ServiceInForce& service) {
  return service.differs() && !service.takenBy;
}

std::vector<StatusLine> statusLines(const Context& context, NVKServerPrefs& pane,
                                    const ServerInForce& inForce) {
  const InterfaceDescription& interface = context.interface;
  const bool running = pane.m_serverPid != -1;
  const std::string state = paneText(pane.ib_admin_label_svrState.stringValue());
  std::vector<StatusLine> lines;
  lines.push_back(
      {"state", labelOf(interface, "ib_admin_label_svrState"),
       running ? sentence("{1}, process {2}", {state, std::to_string(pane.m_serverPid)}) : state});
  for (std::size_t i = 0; i < inForce.services.size(); ++i) {
    const ServiceInForce& service = inForce.services[i];
    lines.push_back({service.key, translated(service.title), serviceText(pane, kClientServices[i], service)});
  }
  lines.push_back({"lock", labelOf(interface, "ib_button_Auth"),
                   pane.authorized() ? translated("Open") : translated("Closed")});
  return lines;
}

Json statusJson(NVKServerPrefs& pane, const ServerInForce& inForce) {
  const bool running = pane.m_serverPid != -1;
  Json status;
  status["state"] = pane.ib_admin_label_svrState.stringValue();
  status["running"] = running;
  status["pid"] = running ? Json(pane.m_serverPid) : Json(nullptr);
  for (std::size_t i = 0; i < inForce.services.size(); ++i) {
    const ServiceInForce& service = inForce.services[i];
    const auto address = addressIn((pane.*kClientServices[i].address).stringValue());
    status["addresses"][service.key] = {{"address", service.differs() ? Json(nullptr) : orNull(address)},
                                        {"text", serviceText(pane, kClientServices[i], service)}};
  }
  status["locked"] = !pane.authorized();
  for (const ServiceInForce& service : inForce.services)
    status["inForce"][service.key] = inForceJson(service);
  return status;
}

std::vector<std::string> notInForce(const Context& context, const NVKServerPrefs& pane) {
  const ServerInForce inForce = serverInForce(pane, context.interface, context.services.computer.ports);
  std::vector<std::string> sentences;
  for (const ServiceInForce& service : inForce.services) {
    if (service.differs()) sentences.push_back(contradiction(service));
  }
  if (std::ranges::any_of(inForce.services, canBeTakenUp)) sentences.push_back(translated(kTakeUpHint));
  return sentences;
}

ExitStatus showStatus(const Context& context, const CommandLine& line) {
  if (line.prometheus && context.json) return refuseBothForms(context);
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  const ServerInForce inForce =
      serverInForce(session.pane(), context.interface, context.services.computer.ports);
  if (line.prometheus) return showMetrics(context, session, inForce);
  const auto pending = pendingSettings(session);
  ChangeReport report;
  if (const ChangeError missing = installationError(context.services.computer.files))
    report.warnings.push_back(missing.sentence);
  if (context.json) {
    auto status = statusJson(session.pane(), inForce);
    status["pending"] = pending;
    return finish(context.output(), report, status);
  }
  std::vector<TableRow> rows;
  for (const StatusLine& each : statusLines(context, session.pane(), inForce)) {
    rows.push_back({each.label, each.text});
  }
  if (pending.empty()) rows.push_back({translated("Pending"), translated("Nothing")});
  for (const std::string& name : pending)
    rows.push_back({&name == &pending.front() ? translated("Pending") : "", name});
  writeTable(context.out, rows);
  if (std::ranges::any_of(inForce.services, canBeTakenUp))
    context.out << '\n' << translated(kTakeUpHint) << '\n';
  return finish(context.output(), report);
}

ExitStatus isServerRunning(const Context& context, const CommandLine& /*line*/) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  const int32_t pid = session.pane().m_serverPid;
  const bool running = pid != -1;
  if (!context.json) context.out << (running ? translated("running") : translated("not running")) << '\n';
  const ExitStatus ended = finish(context.output(), ChangeReport(),
                                  {{"running", running}, {"pid", running ? Json(pid) : Json(nullptr)}});
  return ended != kExitOk || running ? ended : kExitNotRunning;
}

}  // namespace norvik::command
