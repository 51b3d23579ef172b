// The helper's object on the bus. Its methods are those of helper_interface.h.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
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
  // A call as far as it is understood without knowing who it is from.
  struct Call;
  struct Unknown;

  Call read(sd_bus_message* call, bool wantsOutput) const;
  void lookUp(const std::string& busName, Call call);
  void onUser(const std::string& name, std::optional<uid_t> user);
  void decide(const Caller& caller, Call call);
  static void refuse(const Call& call, const std::string& who, const char* error, const char* reason);
  bool isIdle() const;
  std::size_t linesOf(uid_t user) const;
  void wake(std::chrono::microseconds after);
  static int onTime(sd_event_source* source, uint64_t time, void* data);

  Surroundings around_;
  std::chrono::microseconds idle_;
  bool finishing_ = false;
  sd_event_source* timer_ = nullptr;
  std::map<std::string, Unknown> unknown_;  // callers whom the bus has been asked about, by name
  std::map<std::string, std::unique_ptr<CallerQueue>> queues_;  // by the callers' names on the bus
};

}  // namespace norvik::helper
