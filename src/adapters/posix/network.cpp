// Reads the interfaces, and asks the name service beside the caller.
#include "src/adapters/posix/network.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <bit>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <span>
#include <thread>

#include "src/adapters/posix/address_text.h"
#include "src/adapters/posix/connection.h"

namespace norvik {

namespace {

using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

// Without its scope; empty for other families.
std::string textOf(const sockaddr& address) {
  const std::string text = addressText(address).value_or(std::string());
  return text.substr(0, text.find('%'));
}

// The number in the address, byte by byte.
std::span<unsigned char> bytesOf(sockaddr_storage& address) {
  if (address.ss_family == AF_INET) {
    auto& number = reinterpret_cast<sockaddr_in&>(address).sin_addr;
    return {reinterpret_cast<unsigned char*>(&number), sizeof number};
  }
  auto& number = reinterpret_cast<sockaddr_in6&>(address).sin6_addr;
  return {number.s6_addr, sizeof number};
}

// "192.0.2.0/24"; empty where the interface does not say.
std::string networkOf(const sockaddr& address, const sockaddr* mask) {
  if (mask == nullptr || mask->sa_family != address.sa_family) return {};
  sockaddr_storage network{}, masks{};
  std::memcpy(&network, &address, addressSize(address));
  std::memcpy(&masks, mask, addressSize(address));
  const auto number = bytesOf(network);
  const auto kept = bytesOf(masks);
  int length = 0;
  for (std::size_t i = 0; i < number.size(); ++i) {
    number[i] &= kept[i];
    length += std::popcount(kept[i]);
  }
  return textOf(reinterpret_cast<const sockaddr&>(network)) + "/" + std::to_string(length);
}

AddressList resolved(const std::string& name, int flags) {
  addrinfo wish{};
  wish.ai_socktype = SOCK_STREAM;
  wish.ai_flags = flags;
  addrinfo* found = nullptr;
  if (::getaddrinfo(name.c_str(), nullptr, &wish, &found) != 0) found = nullptr;
  return {found, &::freeaddrinfo};
}

std::vector<std::string> addressesOf(const std::string& name) {
  std::vector<std::string> addresses;
  const AddressList list = resolved(name, 0);
  for (const addrinfo* entry = list.get(); entry != nullptr; entry = entry->ai_next) {
    std::string text = textOf(*entry->ai_addr);
    if (!text.empty() && std::ranges::count(addresses, text) == 0) addresses.push_back(std::move(text));
  }
  return addresses;
}

// Shared with a thread that may outlive the question.
struct Answer {
  std::mutex mutex;
  std::condition_variable changed;
  NameLookup lookup;
};

}  // namespace

std::vector<NetworkAddress> PosixNetwork::addresses() {
  std::vector<NetworkAddress> found;
  ifaddrs* list = nullptr;
  if (::getifaddrs(&list) != 0) return found;
  const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner(list, &::freeifaddrs);
  for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
    constexpr unsigned kUp = IFF_UP | IFF_RUNNING;
    if (entry->ifa_addr == nullptr || (entry->ifa_flags & kUp) != kUp) continue;
    std::string text = textOf(*entry->ifa_addr);
    if (!text.empty())
      found.push_back({std::move(text), networkOf(*entry->ifa_addr, entry->ifa_netmask), entry->ifa_name});
  }
  return found;
}

NameLookup PosixNetwork::lookUp(const std::string& name, std::chrono::milliseconds limit) {
  const auto answer = std::make_shared<Answer>();
  std::thread([answer, name] {
    std::vector<std::string> addresses = addressesOf(name);
    const std::scoped_lock lock(answer->mutex);
    answer->lookup = {true, std::move(addresses)};
    answer->changed.notify_one();
  }).detach();
  std::unique_lock lock(answer->mutex);
  answer->changed.wait_for(lock, limit, [&answer] { return answer->lookup.answered; });
  return answer->lookup;
}

bool PosixNetwork::connects(const std::string& address, uint16_t port, std::chrono::milliseconds limit) {
  const AddressList list = resolved(address, AI_NUMERICHOST);
  if (!list) return false;
  // The port is at the same place in both families.
  reinterpret_cast<sockaddr_in*>(list->ai_addr)->sin_port = htons(port);
  return acceptsConnection(*list->ai_addr, list->ai_addrlen, port, limit);
}

Firewall PosixNetwork::firewall(uint16_t port) {
  return firewall_ ? firewall_(port) : Firewall{};
}

}  // namespace norvik
