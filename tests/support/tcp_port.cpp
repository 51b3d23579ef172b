// Sockets of the loopback interface.
#include "tests/support/tcp_port.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace norvik {

namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<uint16_t>(port));
  return address;
}

int makeSocket() {
  return ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

bool connectTo(int port, int socket) {
  const sockaddr_in address = loopback(port);
  return ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

TcpListener::TcpListener() : socket_(makeSocket()) {
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(socket_, generic, size) == -1 || ::listen(socket_, 1) == -1 ||
      ::getsockname(socket_, generic, &size) == -1) {
    ::close(socket_);
    throw std::runtime_error("there is no free port");
  }
  port_ = ntohs(address.sin_port);
}

TcpListener::~TcpListener() {
  ::close(socket_);
}

int freePort() {
  return TcpListener().port();
}

bool connects(int port) {
  const int socket = makeSocket();
  const bool connected = connectTo(port, socket);
  ::close(socket);
  return connected;
}

std::string greetingOn(int port) {
  const int socket = makeSocket();
  const timeval limit{0, 500000};
  ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  std::string greeting;
  std::array<char, 64> block{};
  if (connectTo(port, socket)) {
    for (ssize_t got; (got = ::read(socket, block.data(), block.size())) > 0;)
      greeting.append(block.data(), static_cast<std::size_t>(got));
  }
  ::close(socket);
  return greeting;
}

}  // namespace norvik
