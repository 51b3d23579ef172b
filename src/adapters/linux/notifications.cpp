// A connection for each notification: they are rare, and a lasting connection would have to be served.
#include "src/adapters/linux/notifications.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <chrono>
#include <memory>

namespace norvik {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kLongestPost{2};

using Bus = std::unique_ptr<sd_bus, decltype(&sd_bus_close_unref)>;
using Message = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

// Starts to connect, without waiting for the other end; null on failure.
Bus connect(const std::string& address) {
  sd_bus* made = nullptr;
  if (sd_bus_new(&made) < 0) return {nullptr, &sd_bus_close_unref};
  Bus bus(made, &sd_bus_close_unref);
  const bool started = sd_bus_set_address(made, address.c_str()) >= 0 &&
                       sd_bus_set_bus_client(made, 1) >= 0 && sd_bus_start(made) >= 0;
  if (!started) bus.reset();
  return bus;
}

bool send(sd_bus* bus, const char* name, const char* object, unsigned options) {
  sd_bus_message* made = nullptr;
  if (sd_bus_message_new_signal(bus, &made, kNotificationPath, kNotificationInterface, kNotificationMember) <
      0) {
    return false;
  }
  const Message message(made, &sd_bus_message_unref);
  return sd_bus_message_append(made, kNotificationSignature, name, object != nullptr ? object : "",
                               options) >= 0 &&
         sd_bus_send(bus, made, nullptr) >= 0;
}

// Whether the message was sent: the connection is made and nothing waits to be written.
bool isDelivered(sd_bus* bus) {
  uint64_t waiting = 0;
  return sd_bus_is_ready(bus) > 0 && sd_bus_get_n_queued_write(bus, &waiting) >= 0 && waiting == 0;
}

}  // namespace

void LinuxNotificationCenter::postNotificationName(const char* name, const char* object, unsigned options) {
  lastWasDelivered_ = post(name, object, options);
}

bool LinuxNotificationCenter::post(const char* name, const char* object, unsigned options) const {
  if (busAddress_.empty()) return false;
  const Bus bus = connect(busAddress_);
  if (!bus || !send(bus.get(), name, object, options)) return false;
  const auto end = steady_clock::now() + kLongestPost;
  while (!isDelivered(bus.get())) {
    const int progress = sd_bus_process(bus.get(), nullptr);
    if (progress < 0) return false;
    if (progress > 0) continue;
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - steady_clock::now());
    if (left.count() <= 0) return false;
    // A signal that the program only notes ends the wait, and nothing else.
    const int waited = sd_bus_wait(bus.get(), static_cast<uint64_t>(left.count()));
    if (waited < 0 && waited != -EINTR) return false;
  }
  return true;
}

}  // namespace norvik
