// What is typed, stored and in force, over the simulated computer.
#include "src/frontends/shared/server/in_force.h"

#include <gtest/gtest.h>

#include "src/adapters/simulated/simulated_computer.h"
#include "tests/support/sandbox.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

constexpr int32_t kServer = 700;

class InForceTest : public testing::Test {
 protected:
  InForceTest() { installPlatform(&computer.platform()); }
  ~InForceTest() override {
    pane.reset();
    installPlatform(nullptr);
  }

  // Opens the pane on a computer where these ports are stored, 0 for a service that is off, and where the
  // server runs and listens on `open`.
  void openWith(int nvk, int rdp, const std::set<uint16_t>& open) {
    computer.fileSystem.put("/etc/norvik/svr.cfg", serverConfiguration(nvk, rdp));
    computer.service.setDaemon(kServer);
    computer.ports.setServerPorts(open);
    openPane();
  }
  void openPane() {
    pane = std::make_unique<NVKServerPrefs>(interface);
    pane->awakeFromNib();
    pane->onStateTimer();
  }
  ServerInForce now(Connections connections = Connections::tried) {
    return serverInForce(*pane, interface, computer.ports, connections);
  }
  InForce nvk() { return now().services.at(0).inForce; }
  InForce rdp() { return now().services.at(1).inForce; }
  using Sentences = std::vector<std::string>;
  Sentences sentences() { return inForceSentences(now()); }

  InterfaceDescription interface = shippedInterface();
  SimulatedComputer computer;
  std::unique_ptr<NVKServerPrefs> pane;
};

TEST_F(InForceTest, AServerThatListensAsStoredIsNotRemarkedOn) {
  openWith(4500, 3389, {4500, 3389});
  EXPECT_EQ(sentences(), Sentences{});
  EXPECT_FALSE(now().differs());
  EXPECT_EQ(nvk(), InForce::listens);
  EXPECT_EQ(now().services[0].ports, std::vector<uint16_t>{4500});
  EXPECT_EQ(now().services[0].title, "Norvik clients");
  EXPECT_EQ(now().services[0].setting, "nvk.port");
  EXPECT_EQ(now().services[0].outlet, "ib_admin_edbox_nvkPort");
}

TEST_F(InForceTest, APortThatWasStoredAndNotTakenUp) {
  openWith(4500, 3389, {4073, 3389});
  EXPECT_EQ(sentences(), Sentences{"Norvik clients: stored 4500, in force 4073; apply to take it up."});
  EXPECT_TRUE(now().differs());
  EXPECT_FALSE(now().services[1].differs());
}

TEST_F(InForceTest, AllThreePlaces) {
  openWith(4500, 3389, {4073, 3389});
  pane->ib_admin_edbox_nvkPort.setStringValue("5000");
  EXPECT_EQ(sentences(),
            Sentences{"Norvik clients: typed 5000, stored 4500, in force 4073; apply to take it up."});
}

TEST_F(InForceTest, ATypedPortAloneIsNothingToTakeUp) {
  openWith(4500, 3389, {4500, 3389});
  pane->ib_admin_chkbox_nvkEnabled.setState(kOffState);
  EXPECT_EQ(sentences(), Sentences{"Norvik clients: typed off, stored 4500."});
  EXPECT_FALSE(now().differs());
}

TEST_F(InForceTest, AServiceThatWasSwitchedOffOrOnInTheFile) {
  openWith(4500, 0, {4500, 3389});
  EXPECT_EQ(sentences(), Sentences{"RDP clients: stored off, in force 3389; apply to take it up."});
  computer.ports.setServerPorts({});
  EXPECT_EQ(
      sentences(),
      Sentences{"Norvik clients: stored 4500, but the server does not listen there; apply to take it up."});
  EXPECT_EQ(rdp(), InForce::silent);
}

// The port that is left is that of the service that is on.
TEST_F(InForceTest, APortThatIsLeftBelongsToTheServiceThatIsOn) {
  openWith(4500, 0, {4073});
  EXPECT_EQ(nvk(), InForce::listens);
  EXPECT_EQ(rdp(), InForce::silent);
  EXPECT_EQ(sentences(), Sentences{"Norvik clients: stored 4500, in force 4073; apply to take it up."});
}

TEST_F(InForceTest, PortsThatMayBeAnyServicesAreOnlyNamed) {
  openWith(4500, 4501, {4073, 3389});
  EXPECT_EQ(
      sentences(),
      (Sentences{"Norvik clients: stored 4500, but the server listens on 3389 and 4073; apply to take it up.",
                 "RDP clients: stored 4501, but the server listens on 3389 and 4073; apply to take it up."}));
  EXPECT_EQ(nvk(), InForce::elsewhere);
}

TEST_F(InForceTest, APortThatSomebodyElseHas) {
  computer.ports.hold(4500, 812, "nginx");
  openWith(4500, 3389, {3389});
  EXPECT_EQ(sentences(), (Sentences{"Norvik clients: stored 4500, but the server does not listen there.",
                                    "Port 4500 is taken by nginx, process 812."}));
  EXPECT_TRUE(now().differs());
  EXPECT_FALSE(now().services[1].takenBy);
}

TEST_F(InForceTest, AHolderThatCannotBeSeen) {
  openWith(4500, 3389, {3389});
  ServiceInForce service = now().services[0];
  service.takenBy = PortHolder{};
  EXPECT_EQ(takenSentence(service), "Port 4500 is taken by another program.");
  service.takenBy = PortHolder{812, ""};
  EXPECT_EQ(takenSentence(service), "Port 4500 is taken by another program, process 812.");
}

// A pair of services with one port is refused elsewhere; here it must not make the server its own rival.
TEST_F(InForceTest, TheServerDoesNotTakeItsOwnPort) {
  openWith(4500, 4500, {4500});
  EXPECT_EQ(
      sentences(),
      Sentences{"RDP clients: stored 4500, but the server does not listen there; apply to take it up."});
}

TEST_F(InForceTest, WhatIsStoredAndNoPortIsNotListenedOn) {
  openWith(70000, 3389, {3389});
  EXPECT_EQ(
      sentences(),
      Sentences{"Norvik clients: stored 70000, but the server does not listen there; apply to take it up."});
}

TEST_F(InForceTest, NothingIsInForceWhileTheServerIsStopped) {
  computer.ports.hold(4073, 812, "nginx");
  openPane();
  EXPECT_EQ(nvk(), InForce::stopped);
  EXPECT_EQ(sentences(), Sentences{});
  EXPECT_FALSE(now().differs());
}

TEST_F(InForceTest, AConnectionIsTriedWhereTheSocketsCannotBeSeen) {
  openWith(4500, 3389, {4073, 3389});
  computer.ports.setVisible(false);
  EXPECT_EQ(nvk(), InForce::refuses);
  EXPECT_EQ(rdp(), InForce::accepts);
  EXPECT_EQ(sentences(),
            Sentences{"Norvik clients: stored 4500, but connections there are not accepted; apply "
                      "to take it up."});
  EXPECT_EQ(now(Connections::notTried).services[0].inForce, InForce::notKnown);
  EXPECT_FALSE(now(Connections::notTried).differs());
}

// Whoever accepts there may be anybody; that the service is off is no reason to ask.
TEST_F(InForceTest, NoConnectionIsTriedForAServiceThatIsOff) {
  openWith(4500, 0, {4500, 3389});
  computer.ports.setVisible(false);
  EXPECT_EQ(rdp(), InForce::notKnown);
  EXPECT_EQ(sentences(), Sentences{});
}

// The sockets of a daemon of the super-user cannot be seen, those of one's own program can.
TEST_F(InForceTest, AVisibleHolderTookThePortOfAServerThatCannotBeSeen) {
  class HalfVisible : public ListeningPorts {
   public:
    std::optional<std::set<uint16_t>> portsOf(int32_t) override { return std::nullopt; }
    std::optional<PortHolder> holderOf(uint16_t port) override {
      return port == 4500 ? PortHolder{812, "python3"} : PortHolder{};
    }
    bool accepts(uint16_t) override { return true; }
  } ports;
  openWith(4500, 3389, {});
  const ServerInForce server = serverInForce(*pane, interface, ports);
  EXPECT_EQ(inForceSentences(server),
            (Sentences{"Norvik clients: stored 4500.", "Port 4500 is taken by python3, process 812."}));
  EXPECT_TRUE(server.services[0].differs());
  EXPECT_EQ(server.services[1].inForce, InForce::accepts);
}

TEST_F(InForceTest, WhileAStopIsUnderWayNothingIsKnown) {
  openWith(4500, 3389, {4073, 3389});
  pane->authorize(true, false);
  std::vector<InForce> seen;
  computer.clock.addSleepListener([&](uint32_t) {
    if (pane->isServerChanging()) seen.push_back(nvk());
  });
  pane->stopServer();
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen, std::vector<InForce>(seen.size(), InForce::notKnown));
}

}  // namespace
}  // namespace norvik
