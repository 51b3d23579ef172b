// What an address is good for, from its number alone. Asks nothing.
#pragma once

#include <cstdint>
#include <string>

namespace norvik {

enum class AddressUse {
  others,     // other computers can use it, as far as the number says
  thisOne,    // loopback: only this computer itself
  thisLink,   // link-local: only the same wire, and only with the name of an interface
  noAddress,  // not an address, or one that is nobody's, such as 0.0.0.0
};

// IPv4 or IPv6 as text, without a scope.
AddressUse useOf(const std::string& address);

// "192.0.2.7", or "192.0.2.7:5000" for a port that is not the service's standard one, as the pane writes it;
// IPv6 with a port is put in brackets. `host` is an address or a name.
std::string hostAndPort(const std::string& host, int64_t port, int64_t standardPort);

}  // namespace norvik
