// The ladder of "can they reach me?" over the simulated computer: each question failing in turn, and what is
// not claimed.
#include "src/frontends/shared/reach/ladder.h"

#include <gtest/gtest.h>

#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/shared/reach/address_use.h"
#include "tests/support/sandbox.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

constexpr int32_t kServerProcess = 700;

class LadderTest : public testing::Test {
 protected:
  LadderTest() {
    installPlatform(&computer.platform());
    computer.host.setAddresses({"127.0.0.1", "fe80::1%en0", "2001:db8::5", "192.0.2.7"});
    computer.network.setName("mac.example.com", {"192.0.2.7"});
    store(4500, 3389);
    computer.service.setDaemon(kServerProcess);
  }
  ~LadderTest() override {
    pane.reset();
    installPlatform(nullptr);
  }

  // 0 for a service that is off.
  void store(int nvk, int rdp) {
    computer.fileSystem.put("/etc/norvik/svr.cfg", serverConfiguration(nvk, rdp));
  }
  ReachQuestion asked() {
    pane = std::make_unique<NVKServerPrefs>(interface);
    pane->awakeFromNib();
    pane->onStateTimer();
    ReachQuestion question = reachQuestion(*pane, interface, computer.services());
    question.host = host;
    return question;
  }
  ServiceReach nvk() { return climb(asked(), computer.network).at(0); }
  ServiceReach rdp() { return climb(asked(), computer.network).at(1); }

  static const RungResult& at(const ServiceReach& service, Rung rung) {
    return service.rungs.at(static_cast<std::size_t>(rung));
  }
  // The first that fails, with its sentence; everything behind it was not looked at.
  static void expectFailure(const ServiceReach& service, Rung rung, const std::string& sentence) {
    ASSERT_NE(service.failed(), nullptr);
    EXPECT_EQ(service.failed()->rung, rung);
    EXPECT_EQ(service.failed()->sentence, sentence);
    EXPECT_NE(service.failed()->advice, "");
    for (auto i = static_cast<std::size_t>(rung) + 1; i < service.rungs.size(); ++i)
      EXPECT_EQ(service.rungs[i].verdict, Verdict::notLookedAt);
  }

  InterfaceDescription interface = shippedInterface();
  SimulatedComputer computer;
  std::unique_ptr<NVKServerPrefs> pane;
  std::string host = "mac.example.com";
};

TEST_F(LadderTest, EverythingThatCanBeSeenPassesAndTheFirewallIsNotKnown) {
  const ServiceReach service = nvk();
  EXPECT_EQ(service.reach, Reach::reachable);
  EXPECT_EQ(service.failed(), nullptr);
  for (const RungResult& rung : service.rungs) {
    EXPECT_EQ(rung.verdict, rung.rung == Rung::firewall ? Verdict::notKnown : Verdict::passes);
    EXPECT_NE(rung.sentence, "");
  }
  EXPECT_EQ(service.address, "mac.example.com:4500");
  EXPECT_EQ(reachSentence(service),
            "Norvik clients can connect to mac.example.com:4500, as far as this computer can see.");
}

TEST_F(LadderTest, AllAddressesAreOfferedWithTheirNetworksThoseForOthersFirst) {
  const auto addresses = nvk().addresses;
  ASSERT_EQ(addresses.size(), 4u);
  EXPECT_EQ(addresses[0].text, "192.0.2.7:4500");
  EXPECT_EQ(addresses[0].address.network, "192.0.2.0/24");
  EXPECT_EQ(addresses[0].address.device, "en0");
  EXPECT_TRUE(addresses[0].isUsable);
  EXPECT_TRUE(addresses[0].accepts);
  EXPECT_EQ(addresses[1].text, "[2001:db8::5]:4500");
  EXPECT_FALSE(addresses[2].isUsable);
  EXPECT_FALSE(addresses[3].isUsable);
}

TEST_F(LadderTest, TheStandardPortIsNotPartOfTheAddress) {
  EXPECT_EQ(rdp().address, "mac.example.com");
  EXPECT_EQ(rdp().addresses[1].text, "2001:db8::5");
}

TEST_F(LadderTest, WithoutTheServersToolItIsNotInstalled) {
  computer.fileSystem.remove(PROC_NVKSVC);
  const ServiceReach service = nvk();
  ASSERT_NE(service.failed(), nullptr);
  EXPECT_EQ(service.failed()->rung, Rung::installed);
  EXPECT_EQ(service.reach, Reach::notReachable);
  EXPECT_EQ(service.address, "");
}

TEST_F(LadderTest, AServerThatDoesNotRun) {
  computer.service.setDaemon(std::nullopt);
  expectFailure(nvk(), Rung::running, "The server does not run.");
  EXPECT_EQ(reachSentence(nvk()), "Norvik clients cannot connect. The server does not run.");
}

TEST_F(LadderTest, AServiceThatIsOffWasChosenSo) {
  store(4500, 0);
  expectFailure(rdp(), Rung::switchedOn, "The service is switched off.");
  EXPECT_EQ(rdp().reach, Reach::switchedOff);
  EXPECT_EQ(reachSentence(rdp()), "RDP clients: switched off.");
  computer.service.setDaemon(std::nullopt);
  EXPECT_EQ(rdp().reach, Reach::switchedOff);
}

TEST_F(LadderTest, AnotherPortInForce) {
  computer.ports.setServerPorts({4073, 3389});
  expectFailure(nvk(), Rung::inForce, "Port 4500 is stored, but the server listens on 4073.");
}

TEST_F(LadderTest, APortThatAnotherProgramHas) {
  computer.ports.hold(4500, 812, "nginx");
  expectFailure(nvk(), Rung::listening, "Port 4500 is taken by nginx, process 812.");
  EXPECT_EQ(at(nvk(), Rung::inForce).verdict, Verdict::notKnown);
}

TEST_F(LadderTest, APortThatNobodyListensOn) {
  computer.ports.setServerPorts({});
  expectFailure(nvk(), Rung::listening, "Nothing listens on port 4500.");
}

TEST_F(LadderTest, ANumberThatIsNoPort) {
  store(70000, 3389);
  expectFailure(nvk(), Rung::listening, "The number 70000 is stored, which is no port.");
}

TEST_F(LadderTest, SocketsThatCannotBeSeenAreNotClaimed) {
  computer.ports.setVisible(false);
  const ServiceReach service = nvk();
  EXPECT_EQ(at(service, Rung::inForce).verdict, Verdict::notKnown);
  EXPECT_EQ(at(service, Rung::listening).verdict, Verdict::notKnown);
  EXPECT_EQ(at(service, Rung::connection).verdict, Verdict::passes);
  EXPECT_EQ(service.reach, Reach::reachable);
}

TEST_F(LadderTest, WhileTheServerStartsNothingIsKnown) {
  ReachQuestion question = asked();
  question.isChanging = true;
  const ServiceReach service = climb(question, computer.network).at(0);
  EXPECT_EQ(service.reach, Reach::notKnown);
  EXPECT_EQ(at(service, Rung::running).verdict, Verdict::notKnown);
  EXPECT_EQ(at(service, Rung::switchedOn).verdict, Verdict::notLookedAt);
  EXPECT_EQ(reachSentence(service), "Norvik clients: it is not known yet whether they can connect.");
}

TEST_F(LadderTest, NoAddressForOthers) {
  computer.host.setAddresses({"127.0.0.1", "::1", "fe80::1%en0", "169.254.3.4"});
  expectFailure(nvk(), Rung::address, "This computer has no address that other computers can use.");
  EXPECT_EQ(nvk().addresses.size(), 4u);
}

TEST_F(LadderTest, AnAddressThatThePageShowsForItselfAloneIsNamed) {
  host = "127.0.0.1";
  EXPECT_EQ(at(nvk(), Rung::address).advice, "The page shows 127.0.0.1, which only this computer can use.");
  EXPECT_EQ(nvk().address, "192.0.2.7:4500");
}

TEST_F(LadderTest, ANameThatLeadsNowhere) {
  computer.network.setName("mac.example.com", {});
  expectFailure(nvk(), Rung::hostName, "The name mac.example.com leads nowhere.");
  EXPECT_EQ(nvk().failed()->advice, "Give others the address 192.0.2.7:4500.");
  EXPECT_EQ(nvk().address, "192.0.2.7:4500");
}

TEST_F(LadderTest, ANameThatLeadsElsewhere) {
  computer.network.setName("mac.example.com", {"203.0.113.9"});
  expectFailure(nvk(), Rung::hostName,
                "The name mac.example.com leads to 203.0.113.9, which is not this computer.");
}

TEST_F(LadderTest, ANameThatLeadsHereForThisComputerAloneSaysNothing) {
  computer.network.setName("mac.example.com", {"127.0.1.1"});
  EXPECT_EQ(at(nvk(), Rung::hostName).verdict, Verdict::notKnown);
  EXPECT_EQ(at(nvk(), Rung::connection).verdict, Verdict::passes);
  EXPECT_EQ(nvk().address, "192.0.2.7:4500");
}

TEST_F(LadderTest, ANameServiceThatDoesNotAnswer) {
  computer.network.setAnswers(false);
  EXPECT_EQ(at(nvk(), Rung::hostName).verdict, Verdict::notKnown);
  EXPECT_EQ(nvk().address, "192.0.2.7:4500");
}

TEST_F(LadderTest, AConnectionThatIsNotAccepted) {
  computer.network.closeAddress("192.0.2.7");
  EXPECT_EQ(at(nvk(), Rung::connection).sentence,
            "A connection from this computer to [2001:db8::5]:4500 is accepted.");
  computer.network.closeAddress("2001:db8::5");
  expectFailure(nvk(), Rung::connection,
                "A connection from this computer to 192.0.2.7:4500 or [2001:db8::5]:4500 is not accepted.");
}

TEST_F(LadderTest, AFirewallSaysWhatItCanSay) {
  computer.network.setFirewall({FirewallView::notKnown, "ufw"});
  EXPECT_EQ(at(nvk(), Rung::firewall).verdict, Verdict::notKnown);
  EXPECT_NE(at(nvk(), Rung::firewall).sentence.find("ufw is on"), std::string::npos);
  computer.network.setFirewall({FirewallView::letsIn, "firewalld"});
  EXPECT_EQ(at(nvk(), Rung::firewall).verdict, Verdict::passes);
  computer.network.setFirewall({FirewallView::keepsOut, "firewalld"});
  expectFailure(nvk(), Rung::firewall, "The firewall firewalld keeps connections to port 4500 out.");
  EXPECT_EQ(at(nvk(), Rung::firewall).advice, "Let TCP port 4500 in.");
}

TEST(Rungs, HaveExitStatusesOfTheirOwn) {
  int before = 9;
  for (const RungRow& row : rungs()) EXPECT_EQ(row.exitStatus, ++before);
}

TEST(AddressUse, FollowsTheNumber) {
  for (const char* address : {"192.0.2.7", "10.0.0.1", "172.17.0.1", "2001:db8::1", "fd00::1"})
    EXPECT_EQ(useOf(address), AddressUse::others) << address;
  for (const char* address : {"127.0.0.1", "127.0.1.1", "::1"})
    EXPECT_EQ(useOf(address), AddressUse::thisOne) << address;
  for (const char* address : {"169.254.0.1", "fe80::1"})
    EXPECT_EQ(useOf(address), AddressUse::thisLink) << address;
  for (const char* address : {"", "0.0.0.0", "::", "224.0.0.1", "ff02::1", "mac", "192.0.2", "192.0.2.7:1"})
    EXPECT_EQ(useOf(address), AddressUse::noAddress) << address;
}

}  // namespace
}  // namespace norvik
