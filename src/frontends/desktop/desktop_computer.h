// The computer of the desktop front end: the window's platform interfaces over Qt, all others by the Linux
// adapter.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "src/adapters/linux/linux_computer.h"
#include "src/adapters/posix/root_folder.h"
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
  // The whole platform; it is installed.
  Platform& platform() { return platform_; }
  // What a front end asks of the computer beyond it; the window paints while it waits for the lock.
  ComputerServices services();
  // Waits for the tools that were launched, or for a time; the window paints meanwhile.
  bool waitForTools(std::chrono::milliseconds limit);
  void pause(std::chrono::milliseconds time);
  // Where the settings files are on the disk.
  std::vector<std::string> settingsFiles();

  Busy& busy() { return busy_; }
  QtDrawing& drawing() { return drawing_; }
  QtRunLoop& runLoop() { return runLoop_; }
  QtAlertPanels& alerts() { return alerts_; }

 private:
  LinuxComputerOptions painting(LinuxComputerOptions options);

  RootFolder root_;
  LinuxComputer computer_;
  Busy busy_;
  PaintingLocks locks_;
  QtApplication application_;
  QtAlertPanels alerts_;
  QtWorkspace workspace_;
  QtDrawing drawing_;
  QtRunLoop runLoop_;
  QtProcesses processes_;
  Platform platform_;
};

}  // namespace norvik::desktop
