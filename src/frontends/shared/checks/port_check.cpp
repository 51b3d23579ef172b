// Checks of the ports, over a table of the two services.
#include "src/frontends/shared/checks/port_check.h"

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/interface/setting_description.h"

namespace norvik {

namespace {

using P = NVKServerPrefs;

struct Service {
  Control P::*field;
  Control P::*custom;  // off: the standard port, whatever the field holds
  int64_t (P::*pending)() const;
  int64_t P::*stored;
};
constexpr Service kServices[] = {
    {&P::ib_admin_edbox_nvkPort, &P::ib_admin_chkbox_nvkPort, &P::new_admin_nvkPort, &P::m_admin_nvkPort},
    {&P::ib_admin_edbox_rdpPort, &P::ib_admin_chkbox_rdpPort, &P::new_admin_rdpPort, &P::m_admin_rdpPort},
};

const SettingDescription* settingOf(const std::vector<SettingDescription>& settings, const Control& field) {
  for (const SettingDescription& setting : settings) {
    if (setting.first().outlet == field.name()) return &setting;
  }
  return nullptr;
}

// The server listens on its own ports, and releases them when it takes new ones.
bool heldByServer(const P& pane, int64_t port) {
  if (pane.m_serverPid == -1) return false;
  for (const Service& service : kServices) {
    if (pane.*service.stored == port) return true;
  }
  return false;
}

std::optional<PortFinding> checkService(const P& pane, const InterfaceDescription& interface,
                                        const Service& service, const PortInUse& inUse) {
  const auto settings = settingsOf(interface);
  const Control& field = pane.*service.field;
  const SettingDescription* setting = settingOf(settings, field);
  if (setting != nullptr && (pane.*service.custom).isOn() && !checkedValue(*setting, field.stringValue())) {
    return PortFinding{"A port is " + rangeInWords(setting->first()) + ", not \"" + field.stringValue() +
                       "\"."};
  }
  const int64_t port = (pane.*service.pending)();
  for (const Service& other : kServices) {
    if (&other == &service || (pane.*other.pending)() != port) continue;
    const SettingDescription* others = settingOf(settings, pane.*other.field);
    return PortFinding{"Port " + std::to_string(port) + " is already the port for " +
                       (others != nullptr ? others->page.title : "the other clients") +
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
  for (const Service& service : kServices) fields.push_back(&(pane.*service.field));
  return fields;
}

std::vector<int64_t> pendingPorts(const NVKServerPrefs& pane) {
  std::vector<int64_t> ports;
  for (const Service& service : kServices) ports.push_back((pane.*service.pending)());
  return ports;
}

std::optional<PortFinding> checkPort(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                                     const Control& field, const PortInUse& inUse) {
  for (const Service& service : kServices) {
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
