// The network of the simulated computer: the host's addresses, names that a test gives, and the ports that
// are listened on.
#pragma once

#include <map>
#include <set>

#include "src/adapters/services/network.h"
#include "src/adapters/simulated/host.h"
#include "src/adapters/simulated/listening_ports.h"

namespace norvik {

class SimulatedNetwork : public Network {
 public:
  SimulatedNetwork(SimulatedHost& host, SimulatedListeningPorts& ports) : host_(host), ports_(ports) {}

  // What a name leads to; the host's own leads to its addresses until this says otherwise.
  void setName(const std::string& name, std::vector<std::string> addresses);
  // Whether the name service answers.
  void setAnswers(bool answers) { answers_ = answers; }
  // Connections to this address are refused, also where a program listens.
  void closeAddress(const std::string& address) { closed_.insert(address); }
  void setFirewall(const Firewall& firewall) { firewall_ = firewall; }

  std::vector<NetworkAddress> addresses() override;
  NameLookup lookUp(const std::string& name, std::chrono::milliseconds limit) override;
  bool connects(const std::string& address, uint16_t port, std::chrono::milliseconds limit) override;
  Firewall firewall(uint16_t /*port*/) override { return firewall_; }

 private:
  SimulatedHost& host_;
  SimulatedListeningPorts& ports_;
  std::map<std::string, std::vector<std::string>> names_;
  bool answers_ = true;
  std::set<std::string> closed_;
  Firewall firewall_;
};

}  // namespace norvik
