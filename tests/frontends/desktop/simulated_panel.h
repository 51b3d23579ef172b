// The fixture of the tests that need no real server.
#pragma once

#include <gtest/gtest.h>

#include "tests/frontends/desktop/panel.h"
#include "tests/frontends/desktop/simulated_desktop.h"
#include "tests/support/sandbox.h"

namespace norvik::desktop {

class SimulatedPanel : public testing::Test {
 protected:
  SimulatedPanel() {
    desktop.application.setWindow(&panel.window);
    desktop.alerts.setWindow(&panel.window);
    desktop.drawing.setWindow(&panel.window);
  }

  // Unlocked, with the server running and everything enabled that can be.
  void openEverything() {
    desktop.computer.service.setDaemon(77);
    panel.unlock();
    panel.tick();
  }

  // An address and a name that others can use, and this port stored for the Norvik clients.
  void connectToNetwork(int nvkPort) {
    desktop.computer.host.setAddresses({"127.0.0.1", "192.0.2.7"});
    desktop.computer.network.setName("mac.example.com", {"192.0.2.7"});
    desktop.computer.fileSystem.put("/etc/norvik/svr.cfg", norvik::serverConfiguration(nvkPort, 3389));
    panel.change.takeOver();
  }

  SimulatedDesktop desktop;
  Panel panel{{desktop.platform(), desktop.alerts, desktop.drawing, desktop.busy, desktop.computer.services(),
               desktop.computer.userState,
               [this](std::chrono::milliseconds time) {
                 desktop.computer.clock.sleep(static_cast<uint32_t>(time.count()) * 1000);
               },
               [this] { return std::chrono::milliseconds(desktop.computer.clock.microseconds() / 1000); }}};
  NVKServerPrefs& pane = panel.pane;
};

}  // namespace norvik::desktop
