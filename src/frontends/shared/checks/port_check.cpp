// Checks of the ports, over the table of the two services.
#include "src/frontends/shared/checks/port_check.h"

#include "src/frontends/shared/checks/value_check.h"
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
    return PortFinding{"A port is " + rangeInWords(setting->first()) + ", not \"" + field.stringValue() +
                       "\"."};
  }
  const int64_t port = (pane.*service.pendingPort)();
  for (const ClientService& other : kClientServices) {
    if (&other == &service || (pane.*other.pendingPort)() != port) continue;
    const auto others = portSettingOf(interface, pane, other);
    return PortFinding{"Port " + std::to_string(port) + " is already the port for " +
                       (others ? others->page.title : "the other clients") +
                       "; each service needs its own port."};
  }
  if (heldByServer(pane, port) || !inUse(port)) return std::nullopt;
  return PortFinding{"Port " + std::to_string(port) +
                         " is in use by another program; clients cannot connect to it until that program "
                         "releases it.",
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
