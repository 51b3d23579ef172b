// Calls are sent without blocking, and their replies are waited for here, in short turns.
#include "src/adapters/linux/system_bus.h"

#include <cerrno>
#include <utility>

namespace norvik {

namespace {

using std::chrono::steady_clock;

// Between two turns, so that a window paints often enough.
constexpr std::chrono::microseconds kCallTurn = std::chrono::milliseconds(20);

struct AwaitedReply {
  BusReply reply;
  bool hasCome = false;
};

int takeReply(sd_bus_message* message, void* data, sd_bus_error*) {
  auto& waiting = *static_cast<AwaitedReply*>(data);
  waiting.hasCome = true;
  const sd_bus_error* error = sd_bus_message_get_error(message);
  if (error != nullptr) {
    waiting.reply.error = error->name != nullptr ? error->name : "";
    waiting.reply.sentence = error->message != nullptr ? error->message : "";
  } else {
    waiting.reply.message.reset(sd_bus_message_ref(message));
  }
  return 0;
}

}  // namespace

SystemBus::~SystemBus() {
  sd_bus_flush_close_unref(bus_);
}

void SystemBus::drop() {
  if (bus_ == nullptr) return;
  bus_ = sd_bus_close_unref(bus_);
  if (onLost) onLost();
}

sd_bus* SystemBus::connection() {
  if (bus_ != nullptr && sd_bus_is_open(bus_) > 0) return bus_;
  drop();
  if (sd_bus_open_system(&bus_) < 0) {
    bus_ = nullptr;
  } else if (onConnect) {
    onConnect(bus_);
  }
  return bus_;
}

BusMessage SystemBus::newCall(const char* name, const char* path, const char* interface, const char* member) {
  sd_bus_message* made = nullptr;
  if (sd_bus* const bus = connection(); bus != nullptr)
    sd_bus_message_new_method_call(bus, &made, name, path, interface, member);
  return {made, &sd_bus_message_unref};
}

// Handles at most one message.
bool SystemBus::step(std::chrono::microseconds wait, bool& wasBusy) {
  if (bus_ == nullptr) return false;
  int progress = sd_bus_process(bus_, nullptr);
  if (progress == 0 && wait.count() > 0) {
    sd_bus_wait(bus_, static_cast<uint64_t>(wait.count()));  // a signal of the program's ends it early
    progress = sd_bus_process(bus_, nullptr);
  }
  wasBusy = progress > 0;
  if (progress >= 0 && sd_bus_is_open(bus_) > 0) return true;
  drop();
  return false;
}

bool SystemBus::process(std::chrono::microseconds wait) {
  bool wasBusy = true;
  while (wasBusy) {
    if (!step(wait, wasBusy)) return false;
    wait = std::chrono::microseconds(0);
  }
  return true;
}

// The reply's slot goes before the place where the reply is put.
BusReply SystemBus::call(const BusMessage& message, std::chrono::microseconds limit) {
  AwaitedReply waiting;
  sd_bus_slot* made = nullptr;
  if (!message || sd_bus_call_async(bus_, &made, message.get(), &takeReply, &waiting,
                                    static_cast<uint64_t>(limit.count())) < 0)
    return {.error = SD_BUS_ERROR_DISCONNECTED, .sentence = "there is no system bus"};
  const std::unique_ptr<sd_bus_slot, decltype(&sd_bus_slot_unref)> slot(made, &sd_bus_slot_unref);
  bool wasBusy = false;
  // Whatever else arrives meanwhile neither hurries nor delays the window.
  auto next = steady_clock::now() + kCallTurn;
  bool hasPainted = false;
  while (!waiting.hasCome && step(kCallTurn, wasBusy)) {
    const bool isDue = steady_clock::now() >= next || (waiting.hasCome && hasPainted);
    if (!isDue || !whileWaiting_) continue;
    whileWaiting_();
    hasPainted = true;
    next = steady_clock::now() + kCallTurn;
  }
  if (waiting.hasCome) return std::move(waiting.reply);
  return {.error = SD_BUS_ERROR_DISCONNECTED, .sentence = "the system bus is gone"};
}

}  // namespace norvik
