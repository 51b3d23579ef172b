// The computer of the pane in its host: the host application's platform interfaces and the pane's
// bundle over the toolkit, all others of the computer that it runs on. A plain C++ header.
#pragma once

#include "src/adapters/linux/linux_computer.h"
#include "src/adapters/posix/root_folder.h"
#include "src/frontends/prefpane/appkit_platform.h"
#include "src/frontends/prefpane/pane_bundles.h"
#include "src/frontends/prefpane/pane_session.h"
#include "src/server/mac/platform/platform.h"

namespace norvik::prefpane {

// The computer's lock of changes. Windows are drawn while it is waited for.
class DrawingLocks : public ChangeLocks {
 public:
  explicit DrawingLocks(ChangeLocks& computer) : computer_(computer) {}
  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  ChangeLocks& computer_;
};

class PaneComputer {
 public:
  // Installs itself as the platform for as long as it lives. Works on the sandbox that the environment
  // variable NORVIK_ROOT names, or on the system itself if it is empty or not set.
  PaneComputer();
  ~PaneComputer();
  PaneComputer(const PaneComputer&) = delete;
  PaneComputer& operator=(const PaneComputer&) = delete;

  PaneBundles& bundles() { return bundles_; }
  // For the sessions of all panes of the process.
  SessionComputer forSession();

 private:
  explicit PaneComputer(const LinuxComputerOptions& options);
  std::vector<std::string> settingsFiles();

  RootFolder root_;
  LinuxComputer computer_;
  DrawingLocks locks_;
  AppKitApplication application_;
  AppKitAlertPanels panels_;
  AppKitWorkspace workspace_;
  AppKitNotifications notifications_;
  AppKitDrawing drawing_;
  AppKitRunLoop runLoop_;
  AppKitProcesses processes_;
  PaneBundles bundles_;
  Platform platform_;
  RecordingPlatform recording_;
};

}  // namespace norvik::prefpane
