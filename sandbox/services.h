// The services of the server daemon: which are on, their ports, and the sockets that listen there.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/property_list.h"

namespace norvik::sandbox {

struct Service {
  const char* name;
  const char* key;  // of its dictionary in the server configuration
  int32_t standardPort;
};
inline constexpr std::array<Service, 2> kServices = {
    {{"NVK", "NVKService", 4073}, {"RDP", "RDPService", 3389}}};

// The port of a service by the configuration, where 0 is the standard port; nothing when it is switched off.
std::optional<int32_t> configuredPort(const PropertyList& configuration, const Service& service);

// Who may connect: only this computer, or every other one too.
enum class Reachability { thisComputer, everyone };

// Owns the listening sockets, of IPv4.
class Listeners {
 public:
  using Report = std::function<void(const std::string&)>;

  // `report` gets a line for each thing that happens to the services.
  Listeners(Reachability reachability, Report report)
      : reachability_(reachability), report_(std::move(report)) {}
  ~Listeners();
  Listeners(const Listeners&) = delete;
  Listeners& operator=(const Listeners&) = delete;

  // Makes the services listen as configured. A service whose port stays keeps its socket; one that could not
  // listen before tries again. A port that is not available affects only its own service.
  void configure(const PropertyList& configuration);

  // Waits until a client connects, and greets and disconnects it, or until `wake` can be read; true for the
  // latter.
  bool serve(int wake);

 private:
  struct Listener {
    int32_t port = 0;
    int socket = -1;
  };
  void close(std::size_t service);
  void open(std::size_t service, int32_t port);
  void greet(std::size_t service);

  Reachability reachability_;
  Report report_;
  std::array<Listener, kServices.size()> listeners_;
};

}  // namespace norvik::sandbox
