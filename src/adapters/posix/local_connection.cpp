// One attempt for each family.
#include "src/adapters/posix/local_connection.h"

#include <netinet/in.h>

#include "src/adapters/posix/connection.h"

namespace norvik {

namespace {

constexpr std::chrono::milliseconds kConnectLimit{250};

bool connects(const auto& address, uint16_t port) {
  return acceptsConnection(reinterpret_cast<const sockaddr&>(address), sizeof address, port, kConnectLimit);
}

}  // namespace

bool acceptsConnections(uint16_t port) {
  sockaddr_in four{};
  four.sin_family = AF_INET;
  four.sin_port = htons(port);
  four.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connects(four, port)) return true;
  sockaddr_in6 six{};
  six.sin6_family = AF_INET6;
  six.sin6_port = htons(port);
  six.sin6_addr = in6addr_loopback;
  return connects(six, port);
}

}  // namespace norvik
