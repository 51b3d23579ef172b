// The Mac that the program runs on: every platform interface over the system's own services. A front end adds
// its own drawing, and may replace the application, the alert panels, the workspace and the run loop.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "src/adapters/apple/application.h"
#include "src/adapters/apple/assertions.h"
#include "src/adapters/apple/authorization.h"
#include "src/adapters/apple/bundles.h"
#include "src/adapters/apple/listening_ports.h"
#include "src/adapters/apple/process_manager.h"
#include "src/adapters/apple/property_list_files.h"
#include "src/adapters/apple/run_loop.h"
#include "src/adapters/apple/system_log.h"
#include "src/adapters/apple/system_version.h"
#include "src/adapters/apple/tool_queue.h"
#include "src/adapters/posix/change_locks.h"
#include "src/adapters/posix/files.h"
#include "src/adapters/posix/host.h"
#include "src/adapters/posix/processes.h"
#include "src/adapters/posix/settings_files.h"
#include "src/adapters/services/computer_services.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

struct AppleComputerOptions {
  std::string root;  // in front of every absolute path; empty for the system's own, as outside of tests
  std::string home;  // replaces a leading "~"
  std::string stateFolder;  // for copies of the settings files, made as needed; empty keeps none
  std::string paneIdentifier = "com.veltrane.norvik.prefpane";
  AppleSystemLog::Observer logObserver;  // shown each line of the log; may be none
  // How long a tool whose output is read waits for those before it, and how long giving up the rights waits
  // for tools whose turn has not come.
  std::chrono::milliseconds longestReportDelay = kLongestReportDelay;
  std::chrono::milliseconds longestEnd = std::chrono::seconds(30);
};

// This Mac for the user who runs the program.
AppleComputerOptions appleOptions();

class AppleComputer {
 public:
  explicit AppleComputer(const AppleComputerOptions& options);
  AppleComputer(const AppleComputer&) = delete;
  AppleComputer& operator=(const AppleComputer&) = delete;

  // The whole platform, ready to be installed; a front end may put its own interfaces in place of some.
  Platform platform();
  // And what a front end asks of the computer beyond it.
  ComputerServices services();
  // Why the last request for rights was not granted.
  AuthorizationRefusal lastRefusal() const { return authorization.lastRefusal(); }

 private:
  AppleComputer(const AppleComputerOptions& options, const RootFolder& root);

  ToolQueue tools_;
  PosixChangeLocks locks_;
  PosixSettingsFiles settingsFiles_;
  AppleListeningPorts ports_;
  std::unique_ptr<ProcessManager> processManager_;

 public:
  // The platform interfaces; each lives as long as the computer.
  AppleApplication application;
  AppleAlertPanels alerts;
  AppleWorkspace workspace;
  AppleNotificationCenter notifications;
  AppleDrawing drawing;
  AppleRunLoop runLoop;
  AppleAuthorization authorization;
  PosixFiles files;
  ApplePropertyListFiles propertyLists;
  PosixProcessServices posix;
  PosixHost host;
  AppleSystemVersion systemVersion;
  AppleBundles bundles;
  AppleSystemLog log;
  AppleAssertionHandler assertions;
};

}  // namespace norvik
