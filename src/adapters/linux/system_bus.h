// A connection to the system bus, and calls on it during which a window can go on painting.
#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace norvik {

using BusMessage = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

// The reply, or why there is none.
struct BusReply {
  BusMessage message{nullptr, &sd_bus_message_unref};  // null where the call failed
  std::string error;                                   // the error's name
  std::string sentence;                                // and what it says

  explicit operator bool() const { return message != nullptr; }
};

class SystemBus {
 public:
  // Called again and again while a call waits for its reply, first after some 20 ms, and once more when it
  // has come, for what was clicked until then; may be none.
  using WhileWaiting = std::function<void()>;

  explicit SystemBus(WhileWaiting whileWaiting) : whileWaiting_(std::move(whileWaiting)) {}
  ~SystemBus();
  SystemBus(const SystemBus&) = delete;
  SystemBus& operator=(const SystemBus&) = delete;

  // The connection, made now if there is none or the last one is lost; null if there is no bus. `onConnect`
  // is called with each new connection before it is returned.
  sd_bus* connection();
  std::function<void(sd_bus*)> onConnect;
  // Called when the connection is found to be lost.
  std::function<void()> onLost;

  // A call of a method, to be filled with arguments; null where there is no bus.
  BusMessage newCall(const char* name, const char* path, const char* interface, const char* member);

  // Sends the call and blocks until the reply has come, at most for `limit`. What came after the reply is
  // handled later, when the caller knows what it is about.
  BusReply call(const BusMessage& message, std::chrono::microseconds limit);

  // Handles what has arrived; waits for it at most so long. False where the connection is lost.
  bool process(std::chrono::microseconds wait);

 private:
  bool step(std::chrono::microseconds wait, bool& wasBusy);
  void drop();

  WhileWaiting whileWaiting_;
  sd_bus* bus_ = nullptr;
};

}  // namespace norvik
