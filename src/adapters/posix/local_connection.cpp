// Connects without blocking and waits for the answer.
#include "src/adapters/posix/local_connection.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr int kConnectMilliseconds = 250;

// A socket that takes the port for its own end connects to itself, and then nobody listens.
bool isConnectedToItself(const Descriptor& socket, uint16_t port) {
  sockaddr_in6 own{};
  socklen_t size = sizeof own;
  ::getsockname(socket.number(), reinterpret_cast<sockaddr*>(&own), &size);
  return ntohs(own.sin6_port) == port;  // at the same place for IPv4
}

bool connects(int family, const sockaddr* address, socklen_t size, uint16_t port) {
  const Descriptor socket(::socket(family, SOCK_STREAM, 0));
  if (!socket) return false;
  ::fcntl(socket.number(), F_SETFD, FD_CLOEXEC);
  ::fcntl(socket.number(), F_SETFL, O_NONBLOCK);
  if (::connect(socket.number(), address, size) != 0) {
    if (errno != EINPROGRESS) return false;
    pollfd connected{socket.number(), POLLOUT, 0};
    if (::poll(&connected, 1, kConnectMilliseconds) != 1) return false;
    int error = 0;
    socklen_t errorSize = sizeof error;
    ::getsockopt(socket.number(), SOL_SOCKET, SO_ERROR, &error, &errorSize);
    if (error != 0) return false;
  }
  return !isConnectedToItself(socket, port);
}

}  // namespace

bool acceptsConnections(uint16_t port) {
  sockaddr_in four{};
  four.sin_family = AF_INET;
  four.sin_port = htons(port);
  four.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connects(AF_INET, reinterpret_cast<const sockaddr*>(&four), sizeof four, port)) return true;
  sockaddr_in6 six{};
  six.sin6_family = AF_INET6;
  six.sin6_port = htons(port);
  six.sin6_addr = in6addr_loopback;
  return connects(AF_INET6, reinterpret_cast<const sockaddr*>(&six), sizeof six, port);
}

}  // namespace norvik
