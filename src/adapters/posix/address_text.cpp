// By getnameinfo, which writes numbers and scopes as the system does.
#include "src/adapters/posix/address_text.h"

#include <netdb.h>
#include <netinet/in.h>

#include <array>

namespace norvik {

socklen_t addressSize(const sockaddr& address) {
  if (address.sa_family == AF_INET) return sizeof(sockaddr_in);
  if (address.sa_family == AF_INET6) return sizeof(sockaddr_in6);
  return 0;
}

std::optional<std::string> addressText(const sockaddr& address) {
  std::array<char, NI_MAXHOST> buffer{};
  const int result =
      ::getnameinfo(&address, addressSize(address), buffer.data(), buffer.size(), nullptr, 0, NI_NUMERICHOST);
  return result == 0 ? std::optional<std::string>(buffer.data()) : std::nullopt;
}

}  // namespace norvik
