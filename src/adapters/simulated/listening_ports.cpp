// The stored ports are read as the server reads them: nothing stored means the standard ports, both in use.
#include "src/adapters/simulated/listening_ports.h"

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/property_list.h"
#include "src/server/mac/ui/addresses.h"

namespace norvik {

namespace {

constexpr const char* kServerProgram = "nvkserverd";

struct Service {
  const char* key;
  int64_t standardPort;
};
constexpr Service kServices[] = {{"NVKService", kNvkDefaultPort}, {"RDPService", kRdpDefaultPort}};

std::optional<uint16_t> storedPort(const PropertyList& configuration, const Service& service) {
  const PropertyList* settings = configuration.find(service.key);
  if (settings != nullptr && boolValue(settings->find("Disabled"))) return std::nullopt;
  const int64_t stored = settings != nullptr ? intValue(settings->find("PortNumber")) : 0;
  const int64_t port = stored == 0 ? service.standardPort : stored;
  return port >= 1 && port <= 65535 ? std::optional(static_cast<uint16_t>(port)) : std::nullopt;
}

}  // namespace

void SimulatedListeningPorts::setServerPorts(std::set<uint16_t> ports) {
  set_ = std::move(ports);
  setAtRead_ = service_.settingsReads();
}

std::set<uint16_t> SimulatedListeningPorts::serverPorts() const {
  if (setAtRead_ == service_.settingsReads()) return set_;
  const auto file = fileSystem_.find(kServerConfigFile);
  const auto configuration = file != nullptr ? decodePropertyList(file->bytes) : std::nullopt;
  std::set<uint16_t> ports;
  for (const Service& service : kServices) {
    const auto port = storedPort(configuration.value_or(PropertyList()), service);
    if (port && !held_.contains(*port)) ports.insert(*port);
  }
  return ports;
}

std::set<uint16_t> SimulatedListeningPorts::listening(int32_t pid) const {
  std::set<uint16_t> ports;
  for (const auto& [port, holder] : held_) {
    if (holder.pid == pid) ports.insert(port);
  }
  if (service_.runningPid() == pid) ports.merge(serverPorts());
  return ports;
}

std::optional<std::set<uint16_t>> SimulatedListeningPorts::portsOf(int32_t pid) {
  if (!isVisible_ || pid < 1 || !processes_.exists(pid)) return std::nullopt;
  return listening(pid);
}

std::optional<PortHolder> SimulatedListeningPorts::holderOf(uint16_t port) {
  std::optional<PortHolder> holder;
  const auto server = service_.runningPid();
  if (const auto held = held_.find(port); held != held_.end()) {
    holder = held->second;
  } else if (server && listening(*server).contains(port)) {
    holder = PortHolder{*server, kServerProgram};
  }
  return holder && !isVisible_ ? PortHolder{} : holder;
}

bool SimulatedListeningPorts::accepts(uint16_t port) {
  return holderOf(port).has_value();
}

}  // namespace norvik
