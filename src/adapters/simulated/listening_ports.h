// The TCP ports of the simulated computer: those that the simulated server listens on, and those that a test
// gives to other programs.
#pragma once

#include <map>
#include <string>

#include "src/adapters/services/listening_ports.h"
#include "src/adapters/simulated/file_system.h"
#include "src/adapters/simulated/processes.h"
#include "src/adapters/simulated/server_service.h"

namespace norvik {

// While the simulated server runs, it listens on the ports that are stored, except those that another program
// holds.
class SimulatedListeningPorts : public ListeningPorts {
 public:
  SimulatedListeningPorts(const FileSystem& fileSystem, const ServerService& service,
                          const ProcessTable& processes)
      : fileSystem_(fileSystem), service_(service), processes_(processes) {}

  // Another program listens on the port, until it releases it.
  void hold(uint16_t port, int32_t pid, std::string program) { held_[port] = {pid, std::move(program)}; }
  void release(uint16_t port) { held_.erase(port); }
  // The server listens on these ports, whatever is stored, until it reads its settings again.
  void setServerPorts(std::set<uint16_t> ports);
  // Whether the user may see what processes have open; connections can be tried in any case.
  void setVisible(bool visible) { isVisible_ = visible; }

  std::optional<std::set<uint16_t>> portsOf(int32_t pid) override;
  std::optional<PortHolder> holderOf(uint16_t port) override;
  bool accepts(uint16_t port) override;

 private:
  // As portsOf, but seen by the computer itself.
  std::set<uint16_t> listening(int32_t pid) const;
  std::set<uint16_t> serverPorts() const;

  const FileSystem& fileSystem_;
  const ServerService& service_;
  const ProcessTable& processes_;
  bool isVisible_ = true;
  std::map<uint16_t, PortHolder> held_;
  std::set<uint16_t> set_;
  std::optional<int> setAtRead_;  // how often the server had read its settings when they were set
};

}  // namespace norvik
