// Its own connection to the bus.
#include "tests/support/bus_listener.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include "tests/support/waiting.h"

namespace norvik {

struct BusListener::Connection {
  sd_bus* bus = nullptr;
  std::vector<std::string> lines;
};

namespace {

// What a listener asks for, written out here too: other programs rely on it.
constexpr const char* kMatch =
    "type='signal',interface='com.veltrane.norvik.DistributedNotification',member='Posted',"
    "path='/com/veltrane/norvik/DistributedNotification'";

int take(sd_bus_message* message, void* lines, sd_bus_error*) {
  const char* name = nullptr;
  const char* object = nullptr;
  uint32_t options = 0;
  if (sd_bus_message_read(message, "ssu", &name, &object, &options) < 0) {
    ADD_FAILURE() << "a malformed notification: " << sd_bus_message_get_signature(message, 1);
    return 0;
  }
  const std::string from = *object != '\0' ? object : "null";
  static_cast<std::vector<std::string>*>(lines)->push_back(std::string(name) + " object=" + from +
                                                           " options=" + std::to_string(options));
  return 0;
}

}  // namespace

BusListener::BusListener(const std::string& address) : connection_(std::make_unique<Connection>()) {
  EXPECT_GE(sd_bus_new(&connection_->bus), 0);
  EXPECT_GE(sd_bus_set_address(connection_->bus, address.c_str()), 0);
  EXPECT_GE(sd_bus_set_bus_client(connection_->bus, 1), 0);
  EXPECT_GE(sd_bus_start(connection_->bus), 0) << address;
  // Asks the bus for the signal and waits for its reply.
  EXPECT_GE(sd_bus_add_match(connection_->bus, nullptr, kMatch, &take, &connection_->lines), 0);
}

BusListener::~BusListener() {
  sd_bus_close_unref(connection_->bus);
}

std::vector<std::string> BusListener::received() {
  const bool came = eventually([this] {
    while (sd_bus_process(connection_->bus, nullptr) > 0) {
    }
    return !connection_->lines.empty();
  });
  EXPECT_TRUE(came) << "no notification";
  return connection_->lines;
}

}  // namespace norvik
