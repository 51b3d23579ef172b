// Requests of the system or of a person at a terminal that the program should end, by SIGTERM, SIGINT or
// SIGHUP. They are delivered by the event loop. One object at a time.
#pragma once

#include <functional>
#include <memory>

#include "src/adapters/posix/descriptors.h"

class QSocketNotifier;

namespace norvik::desktop {

class EndRequests {
 public:
  // From now on the signals do not end the program at once.
  EndRequests();
  // They do again.
  ~EndRequests();
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

  // Called once for each request, or once for several.
  std::function<void()> requested;

 private:
  Descriptor reading_, writing_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace norvik::desktop
