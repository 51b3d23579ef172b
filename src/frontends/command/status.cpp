// norvikctl status: the server and the pane at this moment. Labels come from the interface description, texts
// from the pane.
#include "src/frontends/command/status.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/change_transaction.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/interface/address_text.h"

namespace norvik::command {

namespace {

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

struct Address {
  const char* key;
  const char* outlet;
};
constexpr Address kAddresses[] = {{"nvk", "ib_admin_label_nvkAddress"}, {"rdp", "ib_admin_label_rdpAddress"}};

std::string pageOf(const InterfaceDescription& interface, std::string_view outlet) {
  for (const TabDescription& tab : interface.tabs) {
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& control : row.controls) {
          if (control.outlet == outlet) return pageName(tab).title;
        }
      }
    }
  }
  return "";
}

std::string labelOf(const InterfaceDescription& interface, std::string_view outlet) {
  const ControlDescription* control = interface.find(outlet);
  return control != nullptr ? control->label : std::string(outlet);
}

}  // namespace

std::vector<StatusLine> statusLines(const Context& context, NVKServerPrefs& pane) {
  const InterfaceDescription& interface = context.interface;
  const bool running = pane.m_serverPid != -1;
  std::vector<StatusLine> lines;
  lines.push_back({"state", labelOf(interface, "ib_admin_label_svrState"),
                   pane.ib_admin_label_svrState.stringValue() +
                       (running ? ", process " + std::to_string(pane.m_serverPid) : "")});
  for (const Address& address : kAddresses) {
    lines.push_back({address.key, pageOf(interface, address.outlet),
                     onOneLine(pane.outlet(address.outlet)->stringValue())});
  }
  lines.push_back({"lock", labelOf(interface, "ib_button_Auth"), pane.authorized() ? "Open" : "Closed"});
  return lines;
}

nlohmann::ordered_json statusJson(NVKServerPrefs& pane) {
  const bool running = pane.m_serverPid != -1;
  nlohmann::ordered_json status;
  status["state"] = pane.ib_admin_label_svrState.stringValue();
  status["running"] = running;
  status["pid"] = running ? nlohmann::ordered_json(pane.m_serverPid) : nlohmann::ordered_json(nullptr);
  for (const Address& address : kAddresses) {
    const std::string& text = pane.outlet(address.outlet)->stringValue();
    const auto only = addressIn(text);
    status["addresses"][address.key] = {{"address", only ? nlohmann::ordered_json(*only) : nullptr},
                                        {"text", onOneLine(text)}};
  }
  status["locked"] = !pane.authorized();
  return status;
}

ExitStatus showStatus(const Context& context, const CommandLine& /*line*/) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  const auto pending = pendingSettings(session);
  if (context.json) {
    auto status = statusJson(session.pane());
    status["pending"] = pending;
    return finish(context.output(), ChangeReport(), status);
  }
  std::vector<TableRow> rows;
  for (const StatusLine& line : statusLines(context, session.pane())) rows.push_back({line.label, line.text});
  if (pending.empty()) rows.push_back({"Pending", "Nothing"});
  for (const std::string& name : pending) rows.push_back({&name == &pending.front() ? "Pending" : "", name});
  writeTable(context.out, rows);
  return finish(context.output(), ChangeReport());
}

}  // namespace norvik::command
