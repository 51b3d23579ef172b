// All networks are 24 bits of IPv4 or 64 of IPv6, on one device beside the loopback.
#include "src/adapters/simulated/network.h"

#include <algorithm>
#include <array>

namespace norvik {

namespace {

bool isLoopback(const std::string& address) {
  return address.starts_with("127.") || address == "::1";
}

std::string networkOf(const std::string& address) {
  if (address == "::1") return "::1/128";
  if (address.starts_with("127.")) return "127.0.0.0/8";
  if (address.find(':') != std::string::npos) return address.substr(0, address.find("::")) + "::/64";
  return address.substr(0, address.rfind('.')) + ".0/24";
}

}  // namespace

void SimulatedNetwork::setName(const std::string& name, std::vector<std::string> addresses) {
  names_[name] = std::move(addresses);
}

std::vector<NetworkAddress> SimulatedNetwork::addresses() {
  std::vector<NetworkAddress> found;
  for (const auto& address : host_.addresses()) {
    if (!address) continue;
    const std::string text = address->substr(0, address->find('%'));
    found.push_back({text, networkOf(text), isLoopback(text) ? "lo0" : "en0"});
  }
  return found;
}

NameLookup SimulatedNetwork::lookUp(const std::string& name, std::chrono::milliseconds /*limit*/) {
  if (!answers_) return {};
  if (const auto known = names_.find(name); known != names_.end()) return {true, known->second};
  std::array<char, 256> own{};
  if (host_.gethostname(own.data(), own.size() - 1) != 0 || name != own.data()) return {true, {}};
  NameLookup lookup{true, {}};
  for (const NetworkAddress& address : addresses()) {
    if (!isLoopback(address.text)) lookup.addresses.push_back(address.text);
  }
  return lookup;
}

bool SimulatedNetwork::connects(const std::string& address, uint16_t port,
                                std::chrono::milliseconds /*limit*/) {
  const bool isOwn =
      std::ranges::any_of(addresses(), [&address](const NetworkAddress& own) { return own.text == address; });
  return isOwn && !closed_.contains(address) && ports_.accepts(port);
}

}  // namespace norvik
