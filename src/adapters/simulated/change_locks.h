// The change lock of the simulated computer. A test says how long somebody else holds it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "src/adapters/services/change_locks.h"
#include "src/adapters/simulated/clock.h"

namespace norvik {

class SimulatedChangeLocks : public ChangeLocks {
 public:
  // `clock` is borrowed.
  explicit SimulatedChangeLocks(SimulatedClock& clock) : clock_(clock) {}

  // Somebody else holds the lock from now on, for this long by the clock; without a time for ever. 0 ends it.
  void holdElsewhere(std::optional<std::chrono::milliseconds> time);
  // Whether the program itself holds it.
  bool isHeld() const { return *held_; }

  // Waiting moves the clock.
  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  // The time on the clock from which the lock is free; nothing where it will never be.
  std::optional<int64_t> freeAt() const;

  SimulatedClock& clock_;
  std::shared_ptr<bool> held_ = std::make_shared<bool>(false);  // shared with the lock that was given
  std::optional<int64_t> elsewhereUntil_ = 0;                   // in microseconds of the clock; none for ever
};

}  // namespace norvik
