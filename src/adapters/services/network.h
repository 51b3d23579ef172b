// What can be seen of the network from this computer: its addresses, what its name leads to, whether a
// connection is accepted, and what a firewall says. Nothing here needs rights, and nothing is guessed.
//
// May be called on any thread, so that a window can ask beside its own work; each call blocks at most as
// long as its limit says.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace norvik {

struct NetworkAddress {
  std::string text;     // IPv4 or IPv6, without a scope: "192.0.2.7"
  std::string network;  // "192.0.2.0/24"
  std::string device;   // the name of the interface that has it: "eth0"
};

struct NameLookup {
  bool answered = false;               // false where nothing answered within the limit
  std::vector<std::string> addresses;  // none where the name leads nowhere
};

enum class FirewallView { notKnown, letsIn, keepsOut };

struct Firewall {
  FirewallView view = FirewallView::notKnown;
  std::string name;  // of the one that is seen to be on; empty where none is seen
};

class Network {
 public:
  virtual ~Network() = default;

  // The addresses of the interfaces that are up, in the system's order; none also where the system fails.
  // Does not block.
  virtual std::vector<NetworkAddress> addresses() = 0;
  // Asks the system's name service.
  virtual NameLookup lookUp(const std::string& name, std::chrono::milliseconds limit) = 0;
  // Whether somebody accepts a connection to the address; closes it at once. False for a text that is no
  // address.
  virtual bool connects(const std::string& address, uint16_t port, std::chrono::milliseconds limit) = 0;
  // Whether connections to the port are let in, where a user without rights can see that. `letsIn` and
  // `keepsOut` only where a firewall says so. Blocks for at most a second.
  virtual Firewall firewall(uint16_t port) = 0;
};

}  // namespace norvik
