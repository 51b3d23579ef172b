// The computer that the pane runs on, as a set of platform interfaces. A front end picks an adapter for each
// of them and installs the set at start; the module asks nothing else of the machine.
#pragma once

#include "src/server/mac/platform/application.h"
#include "src/server/mac/platform/assertions.h"
#include "src/server/mac/platform/authorization.h"
#include "src/server/mac/platform/files.h"
#include "src/server/mac/platform/host.h"
#include "src/server/mac/platform/processes.h"
#include "src/server/mac/platform/property_lists.h"
#include "src/server/mac/platform/run_loop.h"
#include "src/server/mac/platform/system_log.h"
#include "src/server/mac/platform/system_version.h"

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

// The installed computer. Plain functions, which have no pane to ask, reach it this way too. Ends the program
// if none is installed.
Platform& platform();

// The installed computer, or null.
Platform* installedPlatform();

// Installs a computer, or none with null. The caller keeps it alive for as long as it is installed.
void installPlatform(Platform* computer);

}  // namespace norvik
