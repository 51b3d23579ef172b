// What the services' ports are in three places: typed in the controls, stored in the file, and in force,
// which is what the running server listens on. Reads the pane and the computer's ports; changes nothing.
//
// In force is only what was seen. Where the server's sockets may not be looked at, a connection to the stored
// port is tried, and where that tells nothing either, it is not known.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/services/listening_ports.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

struct ServicePort {
  bool isOn = false;
  int64_t port = 0;

  // Two services that are off are the same, whatever their ports.
  bool operator==(const ServicePort& other) const {
    return isOn == other.isOn && (!isOn || port == other.port);
  }
};

enum class InForce {
  notKnown,
  stopped,    // the server does not run, so nothing is in force
  listens,    // the server listens on the one port in `ports`
  elsewhere,  // the server listens on `ports`, and which of them is this service's cannot be told
  silent,     // the server listens on no port that may be this service's
  accepts,    // somebody accepts connections to the stored port; whether it is the server cannot be seen
  refuses,    // nobody accepts connections to the stored port
};

struct ServiceInForce {
  std::string key;      // "nvk"
  std::string title;    // "Norvik clients"
  std::string setting;  // "nvk.port"
  std::string outlet;   // the field of the port
  ServicePort typed, stored;
  InForce inForce = InForce::notKnown;
  std::vector<uint16_t> ports;  // as the value before says
  // Who listens on the stored port in the place of the server, which should.
  std::optional<PortHolder> takenBy;

  // Whether something was seen that is not as it is stored.
  bool differs() const;
};

struct ServerInForce {
  std::vector<ServiceInForce> services;  // in the order of the table of services

  // Of any service: front ends then offer to have the server take up what is stored.
  bool differs() const;
};

enum class Connections { tried, notTried };

// As it is now. Reads a file for every process of the computer, so not for every tick; a connection that is
// tried blocks for up to half a second. While a start or a stop is under way nothing is known.
ServerInForce serverInForce(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                            ListeningPorts& ports, Connections connections = Connections::tried);

// One line for a person: "Norvik clients: stored 4500, in force 4073; apply to take it up." Empty where
// nothing differs, typed values included.
std::string inForceSentence(const ServiceInForce& service);
// "Port 4073 is taken by nginx, process 812." Empty where nobody has taken it.
std::string takenSentence(const ServiceInForce& service);
// "nginx, process 812"; "another program" where its name cannot be seen.
std::string holderInWords(const PortHolder& holder);
// The sentence of each service, and who took its port, without the empty ones.
std::vector<std::string> inForceSentences(const ServerInForce& server);

}  // namespace norvik
