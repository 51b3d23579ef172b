// The daemon's services.
#include "sandbox/services.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace norvik::sandbox {

std::optional<int32_t> configuredPort(const PropertyList& configuration, const Service& service) {
  const PropertyList* settings = configuration.find(service.key);
  if (settings && boolValue(settings->find("Disabled"))) return std::nullopt;
  const int32_t port = settings ? intValue(settings->find("PortNumber")) : 0;
  return port == 0 ? service.standardPort : port;
}

Listeners::~Listeners() {
  for (std::size_t i = 0; i < kServices.size(); ++i) close(i);
}

void Listeners::configure(const PropertyList& configuration) {
  std::array<std::optional<int32_t>, kServices.size()> ports;
  // Close first: a port may move from one service to the other.
  for (std::size_t i = 0; i < kServices.size(); ++i) {
    ports[i] = configuredPort(configuration, kServices[i]);
    if (listeners_[i].socket >= 0 && ports[i] != listeners_[i].port) close(i);
  }
  for (std::size_t i = 0; i < kServices.size(); ++i) {
    if (!ports[i])
      report_(kServices[i].name + std::string(" is switched off"));
    else if (listeners_[i].socket < 0)
      open(i, *ports[i]);
  }
}

void Listeners::close(std::size_t service) {
  Listener& listener = listeners_[service];
  if (listener.socket < 0) return;
  ::close(listener.socket);
  report_(kServices[service].name + std::string(" no longer listens on port ") +
          std::to_string(listener.port));
  listener = {};
}

void Listeners::open(std::size_t service, int32_t port) {
  const std::string name = kServices[service].name;
  if (port < 1 || port > UINT16_MAX) return report_(name + ": there is no port " + std::to_string(port));
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  address.sin_addr.s_addr = htonl(reachability_ == Reachability::everyone ? INADDR_ANY : INADDR_LOOPBACK);
  const int on = 1;
  setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(socket, 16) != 0) {
    report_(name + " cannot listen on port " + std::to_string(port) + ": " + std::strerror(errno));
    ::close(socket);
    return;
  }
  listeners_[service] = {port, socket};
  report_(name + " listens on port " + std::to_string(port));
}

bool Listeners::serve(int wake) {
  std::array<pollfd, kServices.size() + 1> waiting{};
  for (std::size_t i = 0; i < kServices.size(); ++i) waiting[i] = {listeners_[i].socket, POLLIN, 0};
  waiting.back() = {wake, POLLIN, 0};
  if (poll(waiting.data(), waiting.size(), -1) < 0) return false;
  for (std::size_t i = 0; i < kServices.size(); ++i)
    if (waiting[i].revents != 0) greet(i);
  return waiting.back().revents != 0;
}

void Listeners::greet(std::size_t service) {
  const int client = accept4(listeners_[service].socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (client < 0) return;
  const std::string greeting = kServices[service].name + std::string(" ready\r\n");
  // A client that has already gone does not matter.
  [[maybe_unused]] ssize_t sent = send(client, greeting.data(), greeting.size(), MSG_NOSIGNAL);
  ::close(client);
  report_(kServices[service].name + std::string(" greeted a client"));
}

}  // namespace norvik::sandbox
