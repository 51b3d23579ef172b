// Addresses of the network as text. Asks no name service.
#pragma once

#include <sys/socket.h>

#include <optional>
#include <string>

namespace norvik {

// The bytes that an address of IPv4 or IPv6 takes; 0 for other families.
socklen_t addressSize(const sockaddr& address);
// With its scope, "fe80::1%eth0", where it has one. Nothing for other families.
std::optional<std::string> addressText(const sockaddr& address);

}  // namespace norvik
