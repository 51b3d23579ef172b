// The services of the server daemon: which are switched on, on which ports, and the sockets that listen
// there.
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

// The port that a configuration gives a service, 0 standing for the standard one; nothing when it is switched
// off.
std::optional<int32_t> configuredPort(const PropertyList& configuration, const Service& service);

// The listening sockets, on loopback only. Not copied: it owns them.
class Listeners {
 public:
  using Report = std::function<void(const std::string&)>;

  // What happens to the services is told to the report, a line each.
  explicit Listeners(Report report) : report_(std::move(report)) {}
  ~Listeners();
  Listeners(const Listeners&) = delete;
  Listeners& operator=(const Listeners&) = delete;

  // Makes the services listen as configured. One whose port stays keeps its socket; one that could not listen
  // before is tried again. A port that cannot be had leaves its service without one, and no other.
  void configure(const PropertyList& configuration);

  // Waits until somebody connects, and greets and dismisses them, or until `wake` can be read; true for the
  // latter.
  bool serve(int wake);

 private:
  struct Listener {
    int32_t port = 0;
    int socket = -1;
  };
  void close(size_t service);
  void open(size_t service, int32_t port);
  void greet(size_t service);

  Report report_;
  std::array<Listener, kServices.size()> listeners_;
};

}  // namespace norvik::sandbox
