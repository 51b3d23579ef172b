// Asks the kernel, not a name service.
#include "src/adapters/posix/host.h"

#include <ifaddrs.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace norvik {

namespace {

constexpr std::size_t kLongestName = 255;  // of every system with POSIX

socklen_t addressSize(const sockaddr& address) {
  if (address.sa_family == AF_INET) return sizeof(sockaddr_in);
  if (address.sa_family == AF_INET6) return sizeof(sockaddr_in6);
  return 0;
}

// With its scope, "fe80::1%eth0", where it has one. Nothing for other families.
std::optional<std::string> text(const sockaddr& address) {
  std::array<char, NI_MAXHOST> buffer{};
  const int result =
      ::getnameinfo(&address, addressSize(address), buffer.data(), buffer.size(), nullptr, 0, NI_NUMERICHOST);
  return result == 0 ? std::optional<std::string>(buffer.data()) : std::nullopt;
}

}  // namespace

int PosixHost::gethostname(char* name, std::size_t size) {
  // The system's call fails for a buffer that is too small; ours must truncate the name instead.
  std::array<char, kLongestName + 1> whole{};
  if (::gethostname(whole.data(), whole.size()) != 0) return -1;
  std::memcpy(name, whole.data(), std::min(std::strlen(whole.data()) + 1, size));
  return 0;
}

std::vector<std::optional<std::string>> PosixHost::addresses() {
  std::vector<std::optional<std::string>> found;
  ifaddrs* list = nullptr;
  if (::getifaddrs(&list) != 0) return found;
  const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner(list, &::freeifaddrs);
  for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr || addressSize(*entry->ifa_addr) == 0) continue;
    found.push_back(text(*entry->ifa_addr));
  }
  return found;
}

}  // namespace norvik
