// The computer that the program runs on, or a sandbox on it: every platform interface that needs no toolkit,
// over the system's own services. A front end adds its own alert panels, workspace, application and drawing,
// and may replace the run loop.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/adapters/linux/authorization.h"
#include "src/adapters/linux/bundles.h"
#include "src/adapters/linux/listening_ports.h"
#include "src/adapters/linux/notifications.h"
#include "src/adapters/linux/process_manager.h"
#include "src/adapters/linux/property_list_files.h"
#include "src/adapters/linux/run_loop.h"
#include "src/adapters/linux/system_log.h"
#include "src/adapters/linux/system_rights.h"
#include "src/adapters/linux/system_version.h"
#include "src/adapters/linux/tool_launcher.h"
#include "src/adapters/linux/user_state.h"
#include "src/adapters/posix/change_locks.h"
#include "src/adapters/posix/files.h"
#include "src/adapters/posix/host.h"
#include "src/adapters/posix/network.h"
#include "src/adapters/posix/processes.h"
#include "src/adapters/posix/settings_files.h"
#include "src/adapters/services/computer_services.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

// All paths but the root are the computer's own: a program's "/Users/user" lies below the root.
struct LinuxComputerOptions {
  std::string root;        // in front of every absolute path; empty for the system's own
  std::string home;        // replaces a leading "~"
  std::string busAddress;  // of the bus for notifications; empty for none
  double speed = 1;        // how much faster than real time waits pass; 0.001 to 1000000
  std::vector<std::string> bundleFolders;
  std::string stateFolder;               // for copies of the settings files, made as needed; empty keeps none
  std::string syslogIdent;               // before each line of the log; empty for the program's name
  std::vector<std::string> unreadFiles;  // settings files that nothing on the computer reads
  uid_t user;                            // whose processes the process manager lists
  bool superUser;                        // whether the program has administrator rights already
  bool systemRights = false;  // whether the system decides who is an administrator; else the policy does
  LinuxAuthorization::InteractivePolicy authorization;  // called when a person may be asked; none refuses
  bool textAgent = false;                // whether the system may ask for passwords at the terminal
  std::function<void()> whileAsking;     // called again and again while the system asks; may be none
  LinuxSystemLog::Observer logObserver;  // shown each line of the log; may be none

  LinuxComputerOptions();  // for the user who runs the program
};

// This system for the user who runs the program: home folder, state folder and bus come from the environment.
// The system decides who is an administrator. Nothing on Linux reads the files of the open files limit, the
// screen saver and the window server.
LinuxComputerOptions systemOptions();

// The sandbox in the folder `directory`, with the settings in its folder .norvik: `bus` (an address), `clock`
// (a speed) and `authorization` ("granted" or "refused", read at each request). Without a valid file: no bus,
// real time, refused. Copies of the settings files go to its folder .norvik/state. It represents a computer
// that reads all settings files.
LinuxComputerOptions sandboxOptions(const std::string& directory);

// Whether `directory` is a folder with a sandbox in it. Every front end refuses any other root.
bool isSandbox(const std::string& directory);

// The platform interfaces that a front end implements itself, or chooses from the computer's. Borrowed.
struct FrontEndInterfaces {
  HostApplication& application;
  AlertPanels& alerts;
  Workspace& workspace;
  DistributedNotificationCenter& notifications;
  Drawing& drawing;
  RunLoop& runLoop;
  PosixProcesses& posix;
  Bundles* bundles = nullptr;  // null for the computer's
};

class LinuxComputer {
 public:
  explicit LinuxComputer(const LinuxComputerOptions& options);
  LinuxComputer(const LinuxComputer&) = delete;
  LinuxComputer& operator=(const LinuxComputer&) = delete;

  // Blocks until every tool that was started has ended, so that a front end can show the result. False when
  // the limit passed first; the tools continue either way, even when the program ends.
  bool waitForTools(std::chrono::milliseconds limit) { return launchedTools().wait(limit); }

  // The whole platform, ready to be installed: the front end's own interfaces, and the computer's for the
  // rest.
  Platform platformFor(const FrontEndInterfaces& own);
  // And what a front end asks of the computer beyond it. The delivery is that of the computer's own
  // notifications.
  ComputerServices services();

 private:
  LinuxComputer(const LinuxComputerOptions& options, const RootFolder& root);

  LaunchedTools& launchedTools();
  AuthorizationService& authorizationService();
  const AuthorizationRefusals& refusals() const;

  const std::vector<std::string> unreadFiles_;
  ToolLauncher tools_;
  std::unique_ptr<SystemRights> systemRights_;  // none where the policy decides
  PosixChangeLocks locks_;
  PosixSettingsFiles settingsFiles_;
  LinuxListeningPorts ports_;
  PosixNetwork network_;

 public:
  // The platform interfaces; each lives as long as the computer.
  PosixFiles files;
  LinuxPropertyListFiles propertyLists;
  LinuxProcessManager processManager;
  PosixProcessServices posix;
  LinuxAuthorization authorization;  // by the policy
  LinuxNotificationCenter notifications;
  LinuxRunLoop runLoop;
  PosixHost host;
  LinuxSystemVersion systemVersion;
  LinuxBundles bundles;
  LinuxSystemLog log;
  LinuxAssertionHandler assertions;
  // What the user's programs keep between their runs, beside the copies of the settings files.
  LinuxUserState userState;
};

}  // namespace norvik
