// Binds the port on every address, without listening, and releases it at once.
#include "src/frontends/shared/checks/port_in_use.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace norvik {

namespace {

// A connection that has just ended does not keep the server from the port, so it must not count here.
bool taken(int family, const sockaddr* address, socklen_t size) {
  const int socket = ::socket(family, SOCK_STREAM, 0);
  if (socket == -1) return false;
  const int on = 1;
  setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (family == AF_INET6) setsockopt(socket, IPPROTO_IPV6, IPV6_V6ONLY, &on, sizeof on);
  const bool refused = bind(socket, address, size) == -1 && errno == EADDRINUSE;
  close(socket);
  return refused;
}

}  // namespace

bool portInUse(int64_t port) {
  if (port < 1 || port > 65535) return false;
  sockaddr_in four{};
  four.sin_family = AF_INET;
  four.sin_port = htons(static_cast<uint16_t>(port));
  sockaddr_in6 six{};
  six.sin6_family = AF_INET6;
  six.sin6_port = four.sin_port;
  return taken(AF_INET, reinterpret_cast<const sockaddr*>(&four), sizeof four) ||
         taken(AF_INET6, reinterpret_cast<const sockaddr*>(&six), sizeof six);
}

}  // namespace norvik
