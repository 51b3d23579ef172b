// Connects without blocking, and waits for the outcome.
#include "src/adapters/posix/connection.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>

#include <cerrno>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

// A socket that takes the port for its own end connects to itself, and then nobody listens.
bool isConnectedToItself(const Descriptor& socket, uint16_t port) {
  sockaddr_in6 own{};
  socklen_t size = sizeof own;
  ::getsockname(socket.number(), reinterpret_cast<sockaddr*>(&own), &size);
  return ntohs(own.sin6_port) == port;  // at the same place for IPv4
}

}  // namespace

bool acceptsConnection(const sockaddr& address, socklen_t size, uint16_t port,
                       std::chrono::milliseconds limit) {
  const Descriptor socket(::socket(address.sa_family, SOCK_STREAM, 0));
  if (!socket) return false;
  ::fcntl(socket.number(), F_SETFD, FD_CLOEXEC);
  ::fcntl(socket.number(), F_SETFL, O_NONBLOCK);
  if (::connect(socket.number(), &address, size) != 0) {
    if (errno != EINPROGRESS) return false;
    pollfd connected{socket.number(), POLLOUT, 0};
    if (::poll(&connected, 1, static_cast<int>(limit.count())) != 1) return false;
    int error = 0;
    socklen_t errorSize = sizeof error;
    ::getsockopt(socket.number(), SOL_SOCKET, SO_ERROR, &error, &errorSize);
    if (error != 0) return false;
  }
  return !isConnectedToItself(socket, port);
}

}  // namespace norvik
