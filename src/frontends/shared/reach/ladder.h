// "Can they reach me?": a ladder of questions for each service, from the top down. The first that fails is
// why clients cannot connect, and it comes with what to do. No answer claims what was not seen.
//
// What the pane knows is taken on the main thread, `reachQuestion`. The rest, `climb`, may run on another
// thread, as the network may take seconds to answer.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "src/adapters/services/computer_services.h"
#include "src/frontends/shared/change/failure.h"
#include "src/frontends/shared/server/in_force.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

enum class Rung {
  installed,
  running,
  switchedOn,
  inForce,
  listening,
  address,
  hostName,
  connection,
  firewall,
};

struct RungRow {
  Rung rung;
  const char* key;    // for scripts: "switched-on"
  const char* title;  // for a person
  int exitStatus;     // of `norvikctl check` where this is the first that fails
};

// In the order of the ladder.
std::span<const RungRow> rungs();

enum class Verdict {
  passes,
  fails,
  notKnown,     // it cannot be seen from here
  notLookedAt,  // an earlier one failed
};

struct RungResult {
  Rung rung = Rung::installed;
  Verdict verdict = Verdict::notLookedAt;
  std::string sentence;  // what was seen; empty where nobody looked
  std::string advice;    // what to do about it, or what to know; may be empty
};

// An address that this computer has.
struct OfferedAddress {
  NetworkAddress address;
  std::string text;       // for a person to type or to copy, with the port where clients need it
  bool isUsable = false;  // by others
  bool accepts = false;   // a connection to it was tried and accepted
};

enum class Reach {
  reachable,  // a connection from this computer is accepted, and nothing that can be seen keeps others out
  notReachable,
  notKnown,     // the server is being started or stopped
  switchedOff,  // the service is off, which a person has chosen
};

struct ServiceReach {
  std::string key;    // "nvk"
  std::string title;  // "Norvik clients"
  int64_t port = 0;   // stored
  Reach reach = Reach::notKnown;
  std::string address;            // the one to give to others; empty where there is none
  std::vector<RungResult> rungs;  // all of them, in order
  std::vector<OfferedAddress> addresses;

  // The first that fails; null where none does.
  const RungResult* failed() const;
};

// What was seen on the main thread of one service.
struct ServiceQuestion {
  ServiceInForce service;
  int64_t standardPort = 0;
};

struct ReachQuestion {
  ChangeError installation;  // what is missing; none where the server is installed
  bool isChanging = false;   // a start or a stop is under way
  int32_t serverPid = -1;
  std::string host;  // a name or an address, as the pane offers it; empty where it offers none
  std::vector<ServiceQuestion> services;
};

// Reads the pane and the computer's sockets and processes; main thread, not for every tick.
ReachQuestion reachQuestion(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                            const ComputerServices& services);

// Asks the network what is left, for each service in the order of the table of services. Any thread; blocks
// for up to some seconds where a name service or an address does not answer.
std::vector<ServiceReach> climb(const ReachQuestion& question, Network& network);

// One line for a person: "Norvik clients can connect to 192.0.2.7." or the reason why not.
std::string reachSentence(const ServiceReach& service);

}  // namespace norvik
