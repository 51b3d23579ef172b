// The helper's object on the bus. Its methods are those of helper_interface.h.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <string>

#include "src/helper/caller_queue.h"

namespace norvik::helper {

class Service {
 public:
  // `bus` and `event` are borrowed; the bus is attached to the event loop. The loop ends when there was
  // nothing to do for `idle`.
  Service(sd_bus* bus, sd_event* event, Computer computer, std::chrono::microseconds idle);
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  // Puts the object on the bus and takes the name. False if that is not to be had.
  bool start();

  // Takes no further lines and ends the loop when those that were taken have ended.
  void finish();

  // A call of Run or RunWithOutput.
  void take(sd_bus_message* call, bool wantsOutput);

 private:
  bool isIdle() const;
  std::size_t linesOf(uid_t user) const;
  void wake(std::chrono::microseconds after);
  static int onTime(sd_event_source* source, uint64_t time, void* data);

  Surroundings around_;
  std::chrono::microseconds idle_;
  bool finishing_ = false;
  sd_event_source* timer_ = nullptr;
  std::map<std::string, std::unique_ptr<CallerQueue>> queues_;  // by the callers' names on the bus
};

}  // namespace norvik::helper
