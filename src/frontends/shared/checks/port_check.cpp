// Checks of the ports, over the table of the two services.
#include "src/frontends/shared/checks/port_check.h"

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/server/client_services.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

// The server listens on its own ports, and releases them when it takes new ones.
bool heldByServer(const P& pane, int64_t port) {
  if (pane.m_serverPid == -1) return false;
  for (const ClientService& service : kClientServices) {
    if (pane.*service.storedPort == port) return true;
  }
  return false;
}

std::optional<PortFinding> checkService(const P& pane, const InterfaceDescription& interface,
                                        const ClientService& service, const PortInUse& inUse) {
  const Control& field = pane.*service.field;
  const auto setting = portSettingOf(interface, pane, service);
  if (setting && (pane.*service.custom).isOn() && !checkedValue(*setting, field.stringValue())) {
    return PortFinding{
        sentence("A port is {1}, not \"{2}\".", {rangeInWords(setting->first()), field.stringValue()})};
  }
  const int64_t port = (pane.*service.pendingPort)();
  for (const ClientService& other : kClientServices) {
    if (&other == &service || (pane.*other.pendingPort)() != port) continue;
    const auto others = portSettingOf(interface, pane, other);
    return PortFinding{sentence(
        "Port {1} is already the port for {2}; each service needs its own port.",
        {std::to_string(port), translated(others ? others->page.title : english("the other clients"))})};
  }
  if (heldByServer(pane, port) || !inUse(port)) return std::nullopt;
  return PortFinding{
      sentence("Port {1} is in use by another program; clients cannot connect to it until that program "
               "releases it.",
               {std::to_string(port)}),
      false};
}

}  // namespace

std::vector<const Control*> portFields(const NVKServerPrefs& pane) {
  std::vector<const Control*> fields;
  for (const ClientService& service : kClientServices) fields.push_back(&(pane.*service.field));
  return fields;
}

std::vector<int64_t> pendingPorts(const NVKServerPrefs& pane) {
  std::vector<int64_t> ports;
  for (const ClientService& service : kClientServices) ports.push_back((pane.*service.pendingPort)());
  return ports;
}

std::optional<PortFinding> checkPort(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                                     const Control& field, const PortInUse& inUse) {
  for (const ClientService& service : kClientServices) {
    if (&(pane.*service.field) == &field) return checkService(pane, interface, service, inUse);
  }
  return std::nullopt;
}

std::string portNote(const NVKServerPrefs& pane, const InterfaceDescription& interface, const Control& field,
                     const PortInUse& inUse) {
  const auto finding = field.isEnabled() ? checkPort(pane, interface, field, inUse) : std::nullopt;
  return finding ? finding->sentence : std::string();
}

}  // namespace norvik
