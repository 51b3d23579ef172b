// What a front end asks of a computer and the pane does not: the counterpart of `Platform` for the change
// transaction. Every computer implements each.
#pragma once

#include <string>
#include <vector>

#include "src/adapters/services/authorization_refusal.h"
#include "src/adapters/services/change_locks.h"
#include "src/adapters/services/launched_tools.h"
#include "src/adapters/services/listening_ports.h"
#include "src/adapters/services/network.h"
#include "src/adapters/services/settings_files.h"

namespace norvik {

class NotificationDelivery {
 public:
  virtual ~NotificationDelivery() = default;
  // Whether the notification that was posted last reached the bus; true before any was posted. Does not say
  // whether somebody received it. Main thread; does not block.
  virtual bool lastWasDelivered() const = 0;
};

// Each lives as long as the computer.
struct ComputerServices {
  ChangeLocks& locks;
  LaunchedTools& tools;
  SettingsFiles& files;
  ListeningPorts& ports;
  Network& network;
  NotificationDelivery& delivery;
  const AuthorizationRefusals& refusals;
  // The settings files that nothing on this computer reads, so that what is stored there has no effect.
  std::vector<std::string> unreadFiles = {};
};

// The same services with another lock in front of the computer's, as for a window that is drawn while it
// waits.
inline ComputerServices withLocks(const ComputerServices& services, ChangeLocks& locks) {
  return {.locks = locks,
          .tools = services.tools,
          .files = services.files,
          .ports = services.ports,
          .network = services.network,
          .delivery = services.delivery,
          .refusals = services.refusals,
          .unreadFiles = services.unreadFiles};
}

}  // namespace norvik
