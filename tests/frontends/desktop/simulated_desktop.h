// The desktop's own platform interfaces over the simulated computer: real windows and real events, and a
// world behind them that a test sets up and reads.
#pragma once

#include <string>
#include <vector>

#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/desktop/qt_platform.h"

namespace norvik::desktop {

// Waits move the simulated clock and keep the window alive for the time they take here.
class SimulatedWaits : public QtProcesses {
 public:
  SimulatedWaits(PosixProcesses& computer, Busy& busy, double speed)
      : QtProcesses(computer, busy, speed), simulated_(computer) {}
  void usleep(uint32_t microseconds) override {
    simulated_.usleep(microseconds);
    QtProcesses::usleep(microseconds);
  }

 private:
  PosixProcesses& simulated_;
};

class SimulatedDesktop {
 public:
  // With stored settings that differ from what a missing file means, a stopped server, and a lock that opens
  // on request.
  SimulatedDesktop();
  ~SimulatedDesktop();
  SimulatedDesktop(const SimulatedDesktop&) = delete;
  SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

  // The whole computer with the window's own interfaces; it is installed.
  Platform& platform() { return platform_; }

  // The command lines of the tools that were launched, "TOOL ARGUMENT...", and the addresses that were
  // opened.
  bool launched(const std::string& words) const;
  std::vector<std::string> launches;
  std::vector<std::string> opened;

  SimulatedComputer computer;
  Busy busy;
  QtApplication application{busy};
  QtAlertPanels alerts;
  QtDrawing drawing;
  QtRunLoop runLoop{busy};
  SimulatedWaits processes{computer.posix, busy, 100};

 private:
  void rememberGrant(const std::string& line);
  Platform platform_;
};

}  // namespace norvik::desktop
