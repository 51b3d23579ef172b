// The computer that the pane runs on, as a set of ports. A host picks one adapter for each port and installs
// the set at start; the module asks nothing else of the machine.
#pragma once

#include "platform/application.h"
#include "platform/assertions.h"
#include "platform/authorization.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/processes.h"
#include "platform/property_lists.h"
#include "platform/run_loop.h"
#include "platform/system_log.h"
#include "platform/system_version.h"

namespace norvik {

struct Platform {
  HostApplication& application;
  AlertPanels& alerts;
  Workspace& workspace;
  DistributedNotificationCenter& notifications;
  Drawing& drawing;
  RunLoop& runLoop;
  AuthorizationService& authorization;
  Files& files;
  PropertyListFiles& propertyLists;
  ProcessManager& processManager;
  PosixProcesses& posix;
  Host& host;
  SystemVersion& systemVersion;
  Bundles& bundles;
  SystemLog& log;
  AssertionHandler& assertions;
};

// The installed computer. The plain functions take no pane, which is why it is reached without one. Asking
// before anything was installed ends the program.
Platform& platform();

// Installs a computer, or none with null. The caller keeps it alive for as long as it is installed.
void installPlatform(Platform* computer);

}  // namespace norvik
