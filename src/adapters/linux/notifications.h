// Notifications over a D-Bus message bus: each is the signal Posted with name, object (empty for none) and
// options.
#pragma once

#include <string>

#include "src/adapters/services/computer_services.h"
#include "src/server/mac/platform/application.h"

namespace norvik {

inline constexpr const char* kNotificationPath = "/com/veltrane/norvik/DistributedNotification";
inline constexpr const char* kNotificationInterface = "com.veltrane.norvik.DistributedNotification";
inline constexpr const char* kNotificationMember = "Posted";
inline constexpr const char* kNotificationSignature = "ssu";

class LinuxNotificationCenter : public DistributedNotificationCenter, public NotificationDelivery {
 public:
  // Posts on the bus with that address; an empty one posts nothing.
  explicit LinuxNotificationCenter(std::string busAddress) : busAddress_(std::move(busAddress)) {}

  // The bus has the message when this returns, so that the program may end right after. Gives up on a bus
  // that does not take it within two seconds.
  void postNotificationName(const char* name, const char* object, unsigned options) override;
  bool lastWasDelivered() const override { return lastWasDelivered_; }

 private:
  bool post(const char* name, const char* object, unsigned options) const;

  std::string busAddress_;
  bool lastWasDelivered_ = true;
};

}  // namespace norvik
