// Asks the kernel, not a name service.
#include "src/adapters/posix/host.h"

#include <ifaddrs.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "src/adapters/posix/address_text.h"

namespace norvik {

namespace {

constexpr std::size_t kLongestName = 255;  // of every system with POSIX

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
    found.push_back(addressText(*entry->ifa_addr));
  }
  return found;
}

}  // namespace norvik
