// A whole computer in memory: all platform interfaces over one state, which a test sets up and inspects. It
// shows nothing of the machine that it runs on: no clock, file, process or host name.
//
//   SimulatedComputer computer;
//   computer.effects.setSink([](EffectKind, const std::string& line) { std::puts(line.c_str()); });
//   computer.fileSystem.put("/etc/launchd.conf", "limit maxfiles 1024\n");
//   computer.fileFaults.set(FileOperation::write, "/tmp/x", true);
//   installPlatform(&computer.platform());
#pragma once

#include "src/adapters/services/computer_services.h"
#include "src/adapters/simulated/application.h"
#include "src/adapters/simulated/authorization.h"
#include "src/adapters/simulated/bundles.h"
#include "src/adapters/simulated/change_locks.h"
#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/effects.h"
#include "src/adapters/simulated/file_system.h"
#include "src/adapters/simulated/files.h"
#include "src/adapters/simulated/host.h"
#include "src/adapters/simulated/listening_ports.h"
#include "src/adapters/simulated/network.h"
#include "src/adapters/simulated/outgoing.h"
#include "src/adapters/simulated/processes.h"
#include "src/adapters/simulated/property_list_files.h"
#include "src/adapters/simulated/run_loop.h"
#include "src/adapters/simulated/server_service.h"
#include "src/adapters/simulated/settings_files.h"
#include "src/adapters/simulated/tools.h"
#include "src/adapters/simulated/user_state.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

// Each part can be set up and inspected separately; a part that uses another one comes after it.
class SimulatedComputer {
 public:
  SimulatedComputer();
  SimulatedComputer(const SimulatedComputer&) = delete;
  SimulatedComputer& operator=(const SimulatedComputer&) = delete;

  // The platform interfaces of this computer; lives as long as it does.
  Platform& platform() { return platform_; }
  // And what a front end asks of it beyond them.
  ComputerServices services();

  EffectReporter effects;
  SimulatedClock clock;
  FileSystem fileSystem;
  FileFaults fileFaults;
  ProcessTable processes;
  ServerService service;
  Tools tools;

  SimulatedFiles files;
  SimulatedPropertyListFiles propertyLists;
  SimulatedProcessManager processManager;
  SimulatedPosixProcesses posix;
  SimulatedAuthorization authorization;
  SimulatedApplication application;
  SimulatedAlertPanels alerts;
  SimulatedWorkspace workspace;
  SimulatedNotificationCenter notifications;
  SimulatedDrawing drawing;
  SimulatedRunLoop runLoop;
  SimulatedHost host;
  SimulatedSystemVersion systemVersion;
  SimulatedBundles bundles;
  SimulatedLog log;
  SimulatedAssertionHandler assertions;

  SimulatedChangeLocks locks;
  SimulatedSettingsFiles settingsFiles;
  SimulatedUserState userState;
  SimulatedListeningPorts ports;
  SimulatedNetwork network;

 private:
  Platform platform_;
};

}  // namespace norvik
