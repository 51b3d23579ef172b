// Which zone a connection belongs to depends on where it comes from, so all zones in use have to agree.
#include "src/adapters/linux/firewalld.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

#include "src/adapters/linux/system_bus.h"

namespace norvik {

namespace {

using std::chrono::steady_clock;

constexpr const char* kName = "org.fedoraproject.FirewallD1";
constexpr const char* kPath = "/org/fedoraproject/FirewallD1";
constexpr const char* kZones = "org.fedoraproject.FirewallD1.zone";
constexpr const char* kPolicies = "org.fedoraproject.FirewallD1.policy";
// Lets this computer find its neighbours; active everywhere, and about no TCP port.
constexpr std::string_view kNeighbourPolicy = "allow-host-ipv6";

struct PortRange {
  std::string ports;  // "4073" or "4000-4100"
  std::string protocol;
};

// What a zone or a service says of ports.
struct Settings {
  std::string target;
  std::vector<PortRange> ports;
  std::vector<std::string> services;
  bool isLimited = false;      // a service that is let in to some addresses only
  bool hasOtherRules = false;  // that could decide otherwise
};

bool holdsPort(const PortRange& range, uint16_t port) {
  if (range.protocol != "tcp") return false;
  const char* end = range.ports.data() + range.ports.size();
  unsigned first = 0;
  const auto [behind, error] = std::from_chars(range.ports.data(), end, first);
  if (error != std::errc()) return false;
  if (behind == end) return first == port;
  unsigned last = 0;
  return *behind == '-' && std::from_chars(behind + 1, end, last).ptr == end && first <= port && port <= last;
}

std::vector<std::string> readTexts(sd_bus_message* message) {
  std::vector<std::string> texts;
  const char* text = nullptr;
  if (sd_bus_message_enter_container(message, 'a', "s") <= 0) return texts;
  while (sd_bus_message_read(message, "s", &text) > 0) texts.emplace_back(text);
  sd_bus_message_exit_container(message);
  return texts;
}

std::vector<PortRange> readPorts(sd_bus_message* message) {
  std::vector<PortRange> ranges;
  const char *ports = nullptr, *protocol = nullptr;
  if (sd_bus_message_enter_container(message, 'a', "(ss)") <= 0) return ranges;
  while (sd_bus_message_read(message, "(ss)", &ports, &protocol) > 0) ranges.push_back({ports, protocol});
  sd_bus_message_exit_container(message);
  return ranges;
}

// Keys that say nothing about a port, or nothing that could keep it out or let it in.
bool isHarmless(std::string_view key) {
  constexpr std::string_view kHarmless[] = {
      "version",    "short",   "description", "icmp_blocks",          "masquerade", "forward",
      "interfaces", "sources", "modules",     "icmp_block_inversion", "helpers"};
  return std::ranges::find(kHarmless, key) != std::end(kHarmless);
}

// Enters the value of a{sv}'s entry, which has this type; leaving it is the caller's.
bool entersVariant(sd_bus_message* message, const char* type) {
  return sd_bus_message_enter_container(message, 'v', type) > 0;
}

void readEntry(sd_bus_message* message, std::string_view key, Settings& settings) {
  const char* text = nullptr;
  if (key == "target" && entersVariant(message, "s")) {
    if (sd_bus_message_read(message, "s", &text) > 0) settings.target = text;
    sd_bus_message_exit_container(message);
  } else if (key == "ports" && entersVariant(message, "a(ss)")) {
    settings.ports = readPorts(message);
    sd_bus_message_exit_container(message);
  } else if (key == "services" && entersVariant(message, "as")) {
    settings.services = readTexts(message);
    sd_bus_message_exit_container(message);
  } else {
    // Firewalld leaves out what is empty.
    if (key == "destination") {
      settings.isLimited = true;
    } else if (!isHarmless(key)) {
      settings.hasOtherRules = true;
    }
    sd_bus_message_skip(message, "v");
  }
}

class Questions {
 public:
  explicit Questions(std::chrono::milliseconds limit) : end_(steady_clock::now() + limit) {}

  bool isRunning() {
    int has = 0;
    const BusReply reply = ask(
        bus_.newCall("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"),
        kName);
    return reply && sd_bus_message_read(reply.message.get(), "b", &has) > 0 && has != 0;
  }

  std::optional<bool> isPanicking() {
    int is = 0;
    const BusReply reply = ask(call(kName, "queryPanicMode"));
    if (!reply || sd_bus_message_read(reply.message.get(), "b", &is) <= 0) return std::nullopt;
    return is != 0;
  }

  // Those with interfaces or sources, and the one of all other connections; none where it does not say.
  std::vector<std::string> zonesInUse() {
    const auto active = keysOf(ask(call(kZones, "getActiveZones")));
    const BusReply reply = ask(call(kName, "getDefaultZone"));
    const char* zone = nullptr;
    if (!active || !reply || sd_bus_message_read(reply.message.get(), "s", &zone) <= 0) return {};
    std::vector<std::string> zones = *active;
    if (std::ranges::find(zones, zone) == zones.end()) zones.emplace_back(zone);
    return zones;
  }

  // Whether a policy may decide about connections to this computer. Older versions have none.
  bool hasPolicies() {
    const BusReply reply = ask(call(kPolicies, "getActivePolicies"));
    if (reply.error == SD_BUS_ERROR_UNKNOWN_METHOD || reply.error == SD_BUS_ERROR_UNKNOWN_INTERFACE)
      return false;
    const auto policies = keysOf(reply);
    return !policies ||
           std::ranges::any_of(*policies, [](const auto& name) { return name != kNeighbourPolicy; });
  }

  std::optional<Settings> zone(const std::string& name) {
    return settingsOf(ask(call(kZones, "getZoneSettings2"), name.c_str()));
  }
  std::optional<Settings> service(const std::string& name) {
    return settingsOf(ask(call(kName, "getServiceSettings2"), name.c_str()));
  }

 private:
  BusMessage call(const char* interface, const char* member) {
    BusMessage message = bus_.newCall(kName, kPath, interface, member);
    if (message) sd_bus_message_set_auto_start(message.get(), 0);
    return message;
  }

  BusReply ask(const BusMessage& message, const char* argument = nullptr) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end_ - steady_clock::now());
    if (!message || left.count() <= 0) return {};
    if (argument != nullptr) sd_bus_message_append(message.get(), "s", argument);
    return bus_.call(message, left);
  }

  // Of a dictionary whose values do not matter.
  static std::optional<std::vector<std::string>> keysOf(const BusReply& reply) {
    std::vector<std::string> keys;
    sd_bus_message* message = reply.message.get();
    const char* key = nullptr;
    if (!reply || sd_bus_message_enter_container(message, 'a', "{sa{sas}}") < 0) return std::nullopt;
    while (sd_bus_message_enter_container(message, 'e', "sa{sas}") > 0) {
      if (sd_bus_message_read(message, "s", &key) <= 0) return std::nullopt;
      keys.emplace_back(key);
      sd_bus_message_skip(message, "a{sas}");
      sd_bus_message_exit_container(message);
    }
    return keys;
  }

  static std::optional<Settings> settingsOf(const BusReply& reply) {
    Settings settings;
    sd_bus_message* message = reply.message.get();
    const char* key = nullptr;
    if (!reply || sd_bus_message_enter_container(message, 'a', "{sv}") < 0) return std::nullopt;
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
      if (sd_bus_message_read(message, "s", &key) <= 0) return std::nullopt;
      readEntry(message, key, settings);
      sd_bus_message_exit_container(message);
    }
    return settings;
  }

  steady_clock::time_point end_;
  SystemBus bus_{nullptr};
};

FirewallView viewOf(Questions& firewalld, const std::string& name, uint16_t port) {
  const auto zone = firewalld.zone(name);
  if (!zone || zone->hasOtherRules) return FirewallView::notKnown;
  const auto holds = [port](const PortRange& range) { return holdsPort(range, port); };
  if (zone->target == "ACCEPT" || std::ranges::any_of(zone->ports, holds)) return FirewallView::letsIn;
  bool isSure = true;
  for (const std::string& service : zone->services) {
    const auto settings = firewalld.service(service);
    const bool isMeant = settings && std::ranges::any_of(settings->ports, holds);
    if (isMeant && !settings->isLimited) return FirewallView::letsIn;
    isSure = isSure && settings && !settings->hasOtherRules && !isMeant;
  }
  return isSure ? FirewallView::keepsOut : FirewallView::notKnown;
}

FirewallView viewOf(Questions& firewalld, uint16_t port) {
  const auto isPanicking = firewalld.isPanicking();
  if (isPanicking.value_or(false)) return FirewallView::keepsOut;
  const std::vector<std::string> zones = firewalld.zonesInUse();
  if (!isPanicking || zones.empty() || firewalld.hasPolicies()) return FirewallView::notKnown;
  const FirewallView first = viewOf(firewalld, zones.front(), port);
  const bool allAgree = std::all_of(zones.begin() + 1, zones.end(), [&](const std::string& zone) {
    return viewOf(firewalld, zone, port) == first;
  });
  return allAgree ? first : FirewallView::notKnown;
}

}  // namespace

std::optional<Firewall> askFirewalld(uint16_t port, std::chrono::milliseconds limit) {
  Questions firewalld(limit);
  if (!firewalld.isRunning()) return std::nullopt;
  return Firewall{viewOf(firewalld, port), "firewalld"};
}

}  // namespace norvik
