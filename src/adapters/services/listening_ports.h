// Which TCP ports are listened on, and by which process: what is in force, as opposed to what is stored. Main
// thread; blocks no longer than a connection to this computer takes.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace norvik {

struct PortHolder {
  std::optional<int32_t> pid;  // where it can be seen
  std::string program;         // its name; empty where it cannot be seen
};

class ListeningPorts {
 public:
  virtual ~ListeningPorts() = default;

  // The ports that the process and its children listen on, on any address. Nothing where the system does not
  // show it to this user.
  virtual std::optional<std::set<uint16_t>> portsOf(int32_t pid) = 0;
  // Who listens on the port; nothing where nobody does, as far as can be seen.
  virtual std::optional<PortHolder> holderOf(uint16_t port) = 0;
  // Whether a connection from this computer to the port is accepted, on IPv4 or IPv6. Closes it at once.
  virtual bool accepts(uint16_t port) = 0;
};

}  // namespace norvik
