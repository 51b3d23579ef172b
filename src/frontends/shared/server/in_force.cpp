// Which of the server's ports belongs to which service, as its sockets do not say that: the stored port of a
// service is its own, and one port that is left is that of the one service that is left.
#include "src/frontends/shared/server/in_force.h"

#include <algorithm>

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/server/client_services.h"

namespace norvik {

namespace {

using Ports = std::set<uint16_t>;

// Nothing for a stored number that is no port.
std::optional<uint16_t> portOf(const ServicePort& service) {
  const bool isPort = service.port >= 1 && service.port <= 65535;
  return isPort ? std::optional(static_cast<uint16_t>(service.port)) : std::nullopt;
}

ServiceInForce begun(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                     const ClientService& service) {
  const auto setting = portSettingOf(interface, pane, service);
  ServiceInForce result;
  result.key = service.key;
  result.title = setting ? setting->page.title : service.key;
  result.setting = setting ? setting->name : "";
  result.outlet = (pane.*service.field).name();
  result.typed = {(pane.*service.pendingState)() != 0, (pane.*service.pendingPort)()};
  result.stored = {pane.*service.storedState != 0, pane.*service.storedPort};
  return result;
}

// The services with this switch whose ports are not told yet.
std::vector<ServiceInForce*> untold(ServerInForce& server, bool areOn) {
  std::vector<ServiceInForce*> found;
  for (ServiceInForce& service : server.services) {
    if (service.inForce == InForce::notKnown && service.stored.isOn == areOn) found.push_back(&service);
  }
  return found;
}

void give(ServiceInForce& service, const Ports& ports, InForce inForce) {
  service.inForce = inForce;
  service.ports.assign(ports.begin(), ports.end());
}

// A port that no service has by the file belongs to a service that is on, before it belongs to one that is
// off.
void tellBySockets(ServerInForce& server, Ports open) {
  for (const bool areOn : {true, false}) {
    for (ServiceInForce* service : untold(server, areOn)) {
      const auto port = portOf(service->stored);
      if (port && open.erase(*port) > 0) give(*service, {*port}, InForce::listens);
    }
  }
  for (const bool areOn : {true, false}) {
    const auto left = untold(server, areOn);
    const bool isClear = open.empty() || (left.size() == 1 && open.size() == 1);
    for (ServiceInForce* service : left) {
      give(*service, open, open.empty() ? InForce::silent : isClear ? InForce::listens : InForce::elsewhere);
    }
    if (!left.empty()) open.clear();
  }
}

void tellByConnection(ServiceInForce& service, ListeningPorts& ports) {
  const auto port = portOf(service.stored);
  if (!service.stored.isOn || !port || service.takenBy) return;
  service.inForce = ports.accepts(*port) ? InForce::accepts : InForce::refuses;
}

// Somebody who cannot be seen may be the server, unless the server is known not to listen there.
void findTaker(ServiceInForce& service, const std::optional<Ports>& open, ListeningPorts& ports) {
  const auto port = portOf(service.stored);
  if (!service.stored.isOn || !port || (open && open->contains(*port))) return;
  const auto holder = ports.holderOf(*port);
  if (holder && (open || holder->pid)) service.takenBy = holder;
}

std::string portText(const ServicePort& service) {
  return service.isOn ? std::to_string(service.port) : translated("off");
}

std::string inForceText(const ServiceInForce& service) {
  std::vector<std::string> ports;
  for (const uint16_t port : service.ports) ports.push_back(std::to_string(port));
  switch (service.inForce) {
    case InForce::listens:
      return sentence("in force {1}", {ports.front()});
    case InForce::elsewhere:
      return sentence("but the server listens on {1}", {allOf(ports)});
    case InForce::silent:
      return translated("but the server does not listen there");
    case InForce::refuses:
      return translated("but connections there are not accepted");
    default:
      return "";
  }
}

}  // namespace

bool ServiceInForce::differs() const {
  switch (inForce) {
    case InForce::listens:
      return !stored.isOn || stored.port != ports.front();
    case InForce::silent:
      return stored.isOn;
    case InForce::elsewhere:
    case InForce::refuses:
      return true;
    default:
      return takenBy.has_value();
  }
}

bool ServerInForce::differs() const {
  return std::ranges::any_of(services, &ServiceInForce::differs);
}

ServerInForce serverInForce(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                            ListeningPorts& ports, Connections connections) {
  ServerInForce server;
  for (const ClientService& service : kClientServices) {
    server.services.push_back(begun(pane, interface, service));
  }
  if (pane.isServerChanging()) return server;
  if (pane.m_serverPid == -1) {
    for (ServiceInForce& service : server.services) service.inForce = InForce::stopped;
    return server;
  }
  const auto open = ports.portsOf(pane.m_serverPid);
  if (open) tellBySockets(server, *open);
  for (ServiceInForce& service : server.services) {
    findTaker(service, open, ports);
    if (!open && connections == Connections::tried) tellByConnection(service, ports);
  }
  return server;
}

std::string inForceSentence(const ServiceInForce& service) {
  const bool isTyped = service.typed != service.stored;
  const bool differs = service.differs();
  if (!isTyped && !differs) return "";
  std::string facts = sentence("stored {1}", {portText(service.stored)});
  if (isTyped) facts = sentence("{1}, {2}", {sentence("typed {1}", {portText(service.typed)}), facts});
  const std::string inForce = differs ? inForceText(service) : "";
  if (!inForce.empty()) facts = sentence("{1}, {2}", {facts, inForce});
  // A port that somebody else has cannot be taken up.
  const char* pattern =
      differs && !service.takenBy ? english("{1}: {2}; apply to take it up.") : english("{1}: {2}.");
  return sentence(pattern, {translated(service.title), facts});
}

std::string takenSentence(const ServiceInForce& service) {
  if (!service.takenBy) return "";
  return sentence("Port {1} is taken by {2}.",
                  {std::to_string(service.stored.port), holderInWords(*service.takenBy)});
}

std::string holderInWords(const PortHolder& holder) {
  const std::string who = holder.program.empty() ? translated("another program") : holder.program;
  return holder.pid ? sentence("{1}, process {2}", {who, std::to_string(*holder.pid)}) : who;
}

std::vector<std::string> inForceSentences(const ServerInForce& server) {
  std::vector<std::string> sentences;
  for (const ServiceInForce& service : server.services) {
    for (std::string& each : std::vector{inForceSentence(service), takenSentence(service)}) {
      if (!each.empty()) sentences.push_back(std::move(each));
    }
  }
  return sentences;
}

}  // namespace norvik
