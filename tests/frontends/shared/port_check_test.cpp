// The checks of the ports on a pane, and whether a port is in use on this computer.
#include "src/frontends/shared/checks/port_check.h"

#include <gtest/gtest.h>

#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/shared/checks/port_in_use.h"
#include "tests/support/shipped_interface.h"
#include "tests/support/tcp_port.h"

namespace norvik {
namespace {

class PortCheckTest : public testing::Test {
 protected:
  PortCheckTest() : interface(shippedInterface()) {
    installPlatform(&computer.platform());
    pane = std::make_unique<NVKServerPrefs>(interface);
    pane->awakeFromNib();
  }
  ~PortCheckTest() override {
    pane.reset();
    installPlatform(nullptr);
  }

  void typeNvkPort(const std::string& text) {
    pane->ib_admin_chkbox_nvkPort.setState(kOnState);
    pane->ib_admin_edbox_nvkPort.setStringValue(text);
  }
  std::optional<PortFinding> check(const Control& field) const {
    return checkPort(*pane, interface, field, [this](int64_t port) { return port == used; });
  }
  std::string sentence() const {
    const auto finding = check(pane->ib_admin_edbox_nvkPort);
    return finding ? finding->sentence : "";
  }

  InterfaceDescription interface;
  SimulatedComputer computer;
  std::unique_ptr<NVKServerPrefs> pane;
  int64_t used = 0;
};

TEST_F(PortCheckTest, AGoodPortIsNotRemarkedOn) {
  EXPECT_EQ(sentence(), "");
  for (const char* port : {"1", "5000", "65535"}) {
    typeNvkPort(port);
    EXPECT_EQ(sentence(), "") << port;
  }
}

TEST_F(PortCheckTest, WhatIsNoPort) {
  for (const char* text : {"abc", "", "0", "-5", "65536", "50 00"}) {
    typeNvkPort(text);
    EXPECT_EQ(sentence(), std::string("A port is a whole number from 1 to 65535, not \"") + text + "\".");
    EXPECT_TRUE(check(pane->ib_admin_edbox_nvkPort)->blocks);
  }
}

TEST_F(PortCheckTest, WhatTheFieldHoldsDoesNotCountWhileTheStandardPortIsChosen) {
  typeNvkPort("abc");
  pane->ib_admin_chkbox_nvkPort.setState(kOffState);
  EXPECT_EQ(sentence(), "");
}

TEST_F(PortCheckTest, ThePortOfTheOtherService) {
  typeNvkPort("3389");
  EXPECT_EQ(sentence(), "Port 3389 is already the port for RDP clients; each service needs its own port.");
  EXPECT_EQ(check(pane->ib_admin_edbox_rdpPort)->sentence,
            "Port 3389 is already the port for Norvik clients; each service needs its own port.");
}

TEST_F(PortCheckTest, APortThatAnotherProgramUsesIsAWarning) {
  used = 5000;
  typeNvkPort("5000");
  const auto finding = check(pane->ib_admin_edbox_nvkPort);
  ASSERT_TRUE(finding);
  EXPECT_FALSE(finding->blocks);
  EXPECT_EQ(
      finding->sentence,
      "Port 5000 is in use by another program; clients cannot connect to it until that program releases it.");
}

TEST_F(PortCheckTest, ThePortsOfTheRunningServerAreItsOwn) {
  used = 4073;
  EXPECT_NE(sentence(), "");
  pane->m_serverPid = 4321;
  EXPECT_EQ(sentence(), "");
}

TEST_F(PortCheckTest, OtherFieldsHoldNoPort) {
  EXPECT_FALSE(check(pane->ib_admin_edbox_maxFSoft));
  EXPECT_EQ(portFields(*pane).size(), 2U);
  EXPECT_EQ(pendingPorts(*pane), (std::vector<int64_t>{4073, 3389}));
}

TEST(PortInUseTest, APortIsInUseWhileAProgramListens) {
  int port = 0;
  {
    const TcpListener listener;
    port = listener.port();
    EXPECT_TRUE(portInUse(port));
  }
  EXPECT_FALSE(portInUse(port));
}

TEST(PortInUseTest, WhatIsNoPortIsNotInUse) {
  for (const int64_t port : {int64_t{-1}, int64_t{0}, int64_t{65536}}) EXPECT_FALSE(portInUse(port));
}

}  // namespace
}  // namespace norvik
