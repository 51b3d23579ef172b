// How the answers of firewalld are read. A stand-in gives them, on a message bus of the test's own.
#include "src/adapters/linux/firewalld.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/session_bus.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;

constexpr const char* kFirewalld = "org.fedoraproject.FirewallD1";
constexpr uint16_t kPort = 4073;

// As firewalld has it, which leaves out what is empty.
struct StandInZone {
  std::string target = "default";
  std::string ports;  // one range; none where empty
  std::string protocol = "tcp";
  std::string service;     // one; none where empty
  std::string otherRules;  // a key with rules that are not looked into; none where empty
};

struct StandInFirewalld {
  std::string defaultZone = "public";
  std::map<std::string, StandInZone> zones = {{"public", {}}};
  std::vector<std::string> activeZones;
  std::vector<std::string> policies = {"allow-host-ipv6"};
  std::map<std::string, std::string> services = {{"ssh", "22"}};
  bool limitsServices = false;  // to some addresses
  bool isPanicking = false;
  bool refuses = false;  // everything, as where a user may not ask
  bool isSilent = false;
};

void appendText(sd_bus_message* reply, const char* key, const std::string& text) {
  sd_bus_message_append(reply, "{sv}", key, "s", text.c_str());
}

void appendZone(sd_bus_message* reply, const StandInZone& zone) {
  appendText(reply, "short", "A zone");
  appendText(reply, "target", zone.target);
  if (!zone.service.empty()) sd_bus_message_append(reply, "{sv}", "services", "as", 1, zone.service.c_str());
  sd_bus_message_append(reply, "{sv}", "forward", "b", 1);
  if (!zone.ports.empty()) {
    sd_bus_message_append(reply, "{sv}", "ports", "a(ss)", 1, zone.ports.c_str(), zone.protocol.c_str());
  }
  if (!zone.otherRules.empty())
    sd_bus_message_append(reply, "{sv}", zone.otherRules.c_str(), "as", 1, "rule");
}

void appendKeys(sd_bus_message* reply, const std::vector<std::string>& keys) {
  sd_bus_message_open_container(reply, 'a', "{sa{sas}}");
  for (const std::string& key : keys)
    sd_bus_message_append(reply, "{sa{sas}}", key.c_str(), 1, "interfaces", 1, "eth0");
  sd_bus_message_close_container(reply);
}

class FirewalldTest : public testing::Test {
 protected:
  void SetUp() override { ::setenv("DBUS_SYSTEM_BUS_ADDRESS", bus_.address().c_str(), 1); }
  void TearDown() override {
    ends_ = true;
    if (thread_.joinable()) thread_.join();
    sd_bus_flush_close_unref(connection_);
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
  }

  // Puts it on the bus; no change to `firewalld` afterwards.
  void start() {
    ASSERT_GE(sd_bus_open_system(&connection_), 0);
    ASSERT_GE(sd_bus_request_name(connection_, kFirewalld, 0), 0);
    thread_ = std::thread([this] { serve(); });
  }
  FirewallView view() {
    start();
    const auto seen = askFirewalld(kPort, 5s);
    EXPECT_TRUE(seen.has_value());
    EXPECT_EQ(seen.value_or(Firewall()).name, "firewalld");
    return seen.value_or(Firewall()).view;
  }

  StandInFirewalld firewalld;

 private:
  void serve() {
    while (!ends_) {
      sd_bus_message* message = nullptr;
      if (sd_bus_process(connection_, &message) == 0) sd_bus_wait(connection_, 5000);
      if (message != nullptr && sd_bus_message_is_method_call(message, nullptr, nullptr) > 0) answer(message);
      sd_bus_message_unref(message);
    }
  }

  void answer(sd_bus_message* question) {
    if (firewalld.isSilent) return;
    const std::string member = sd_bus_message_get_member(question);
    sd_bus_message* reply = nullptr;
    if (firewalld.refuses) {
      sd_bus_reply_method_errorf(question, SD_BUS_ERROR_ACCESS_DENIED, "not for you");
      return;
    }
    sd_bus_message_new_method_return(question, &reply);
    if (member == "queryPanicMode") sd_bus_message_append(reply, "b", firewalld.isPanicking ? 1 : 0);
    if (member == "getDefaultZone") sd_bus_message_append(reply, "s", firewalld.defaultZone.c_str());
    if (member == "getActiveZones") appendKeys(reply, firewalld.activeZones);
    if (member == "getActivePolicies") appendKeys(reply, firewalld.policies);
    if (member.ends_with("Settings2")) appendSettings(question, reply);
    sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
  }

  void appendSettings(sd_bus_message* question, sd_bus_message* reply) {
    const char* name = nullptr;
    sd_bus_message_read(question, "s", &name);
    sd_bus_message_open_container(reply, 'a', "{sv}");
    if (std::string(sd_bus_message_get_member(question)) == "getZoneSettings2") {
      appendZone(reply, firewalld.zones[name]);
    } else {
      sd_bus_message_append(reply, "{sv}", "ports", "a(ss)", 1, firewalld.services[name].c_str(), "tcp");
      if (firewalld.limitsServices) sd_bus_message_append(reply, "{sv}", "destination", "a{ss}", 0);
    }
    sd_bus_message_close_container(reply);
  }

  SessionBus bus_;
  sd_bus* connection_ = nullptr;
  std::thread thread_;
  std::atomic<bool> ends_ = false;
};

TEST_F(FirewalldTest, NothingIsSaidWhereItDoesNotRun) {
  EXPECT_FALSE(askFirewalld(kPort, 5s).has_value());
}

TEST_F(FirewalldTest, AZoneWithoutThePortKeepsItOut) {
  firewalld.zones["public"].service = "ssh";
  EXPECT_EQ(view(), FirewallView::keepsOut);
}

TEST_F(FirewalldTest, ARangeWithThePortLetsItIn) {
  firewalld.zones["public"].ports = "4000-4100";
  EXPECT_EQ(view(), FirewallView::letsIn);
}

TEST_F(FirewalldTest, TheSamePortOfAnotherProtocolDoesNot) {
  firewalld.zones["public"].ports = "4073";
  firewalld.zones["public"].protocol = "udp";
  EXPECT_EQ(view(), FirewallView::keepsOut);
}

TEST_F(FirewalldTest, AServiceWithThePortLetsItIn) {
  firewalld.zones["public"].service = "norvik";
  firewalld.services["norvik"] = "4073";
  EXPECT_EQ(view(), FirewallView::letsIn);
}

TEST_F(FirewalldTest, AServiceForSomeAddressesSaysNothingOfItsPort) {
  firewalld.zones["public"].service = "norvik";
  firewalld.services["norvik"] = "4073";
  firewalld.limitsServices = true;
  EXPECT_EQ(view(), FirewallView::notKnown);
}

TEST_F(FirewalldTest, AServiceForSomeAddressesSaysNothingOfOtherPorts) {
  firewalld.zones["public"].service = "ssh";
  firewalld.limitsServices = true;
  EXPECT_EQ(view(), FirewallView::keepsOut);
}

TEST_F(FirewalldTest, AZoneThatAcceptsEverythingLetsItIn) {
  firewalld.zones["public"].target = "ACCEPT";
  EXPECT_EQ(view(), FirewallView::letsIn);
}

TEST_F(FirewalldTest, PanicKeepsEverythingOut) {
  firewalld.zones["public"].target = "ACCEPT";
  firewalld.isPanicking = true;
  EXPECT_EQ(view(), FirewallView::keepsOut);
}

TEST_F(FirewalldTest, ZonesThatDisagreeSayNothing) {
  firewalld.zones["public"].ports = "4073";
  firewalld.zones["work"] = {};
  firewalld.activeZones = {"public", "work"};
  EXPECT_EQ(view(), FirewallView::notKnown);
}

TEST_F(FirewalldTest, ARichRuleCouldDecideOtherwise) {
  firewalld.zones["public"].ports = "4073";
  firewalld.zones["public"].otherRules = "rich_rules";
  EXPECT_EQ(view(), FirewallView::notKnown);
}

TEST_F(FirewalldTest, APolicyCouldDecideOtherwise) {
  firewalld.zones["public"].ports = "4073";
  firewalld.policies.emplace_back("mine");
  EXPECT_EQ(view(), FirewallView::notKnown);
}

TEST_F(FirewalldTest, ARefusalIsNoAnswer) {
  firewalld.refuses = true;
  EXPECT_EQ(view(), FirewallView::notKnown);
}

TEST_F(FirewalldTest, TheLimitHoldsWhereItIsSilent) {
  firewalld.isSilent = true;
  start();
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(askFirewalld(kPort, 50ms).value_or(Firewall()).view, FirewallView::notKnown);
  EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
}

}  // namespace
}  // namespace norvik
