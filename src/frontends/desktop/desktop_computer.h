// The computer of the desktop front end: the window's platform interfaces over Qt, all others by the Linux
// adapter.
#pragma once

#include "src/adapters/linux/linux_computer.h"
#include "src/frontends/desktop/qt_platform.h"
#include "src/server/mac/platform/platform.h"

namespace norvik::desktop {

class DesktopComputer {
 public:
  // Installs itself as the platform for as long as it lives.
  explicit DesktopComputer(const LinuxComputerOptions& options);
  ~DesktopComputer();
  DesktopComputer(const DesktopComputer&) = delete;
  DesktopComputer& operator=(const DesktopComputer&) = delete;

  // The window that alert panels belong to and whose drawing can be forced; null for none.
  void setWindow(QWidget* window);

  LinuxComputer& computer() { return computer_; }
  QtRunLoop& runLoop() { return runLoop_; }
  QtAlertPanels& alerts() { return alerts_; }

 private:
  LinuxComputer computer_;
  Busy busy_;
  QtApplication application_;
  QtAlertPanels alerts_;
  QtWorkspace workspace_;
  QtDrawing drawing_;
  QtRunLoop runLoop_;
  QtProcesses processes_;
  Platform platform_;
};

}  // namespace norvik::desktop
