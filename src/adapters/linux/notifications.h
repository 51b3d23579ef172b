// The notification port over a D-Bus message bus: a notification is the signal Posted with name, object
// (empty for none) and options.
#pragma once

#include <string>

#include "src/server/mac/platform/application.h"

namespace norvik {

inline constexpr const char* kNotificationPath = "/com/veltrane/norvik/DistributedNotification";
inline constexpr const char* kNotificationInterface = "com.veltrane.norvik.DistributedNotification";
inline constexpr const char* kNotificationMember = "Posted";
inline constexpr const char* kNotificationSignature = "ssu";

class LinuxNotificationCenter : public DistributedNotificationCenter {
 public:
  // Posts on the bus of that address; nowhere where it is empty.
  explicit LinuxNotificationCenter(std::string busAddress) : busAddress_(std::move(busAddress)) {}

  // Gives the message to the bus before it returns, so that a host may end right after. A bus that does not
  // take it within two seconds does not get it.
  void postNotificationName(const char* name, const char* object, unsigned options) override;

 private:
  std::string busAddress_;
};

}  // namespace norvik
