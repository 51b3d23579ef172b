// The ranges are those of the standards: loopback, link-local, unspecified, multicast.
#include "src/frontends/shared/reach/address_use.h"

#include <arpa/inet.h>
#include <netinet/in.h>

namespace norvik {

namespace {

AddressUse useOfIPv4(uint32_t number) {
  const uint32_t first = number >> 24U;
  if (first == 127) return AddressUse::thisOne;
  if (number >> 16U == 0xA9FE) return AddressUse::thisLink;  // 169.254
  if (first == 0 || first >= 224) return AddressUse::noAddress;
  return AddressUse::others;
}

AddressUse useOfIPv6(const in6_addr& address) {
  if (IN6_IS_ADDR_LOOPBACK(&address)) return AddressUse::thisOne;
  if (IN6_IS_ADDR_LINKLOCAL(&address)) return AddressUse::thisLink;
  if (IN6_IS_ADDR_UNSPECIFIED(&address) || IN6_IS_ADDR_MULTICAST(&address)) return AddressUse::noAddress;
  return AddressUse::others;
}

}  // namespace

AddressUse useOf(const std::string& address) {
  in_addr four{};
  if (inet_pton(AF_INET, address.c_str(), &four) == 1) return useOfIPv4(ntohl(four.s_addr));
  in6_addr six{};
  if (inet_pton(AF_INET6, address.c_str(), &six) == 1) return useOfIPv6(six);
  return AddressUse::noAddress;
}

std::string hostAndPort(const std::string& host, int64_t port, int64_t standardPort) {
  if (port == standardPort) return host;
  const bool isIPv6 = host.find(':') != std::string::npos;
  return (isIPv6 ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

}  // namespace norvik
