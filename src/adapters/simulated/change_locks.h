// The change lock of the simulated computer. A test says how long somebody else holds it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "src/adapters/services/change_locks.h"
#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/tools.h"

namespace norvik {

class SimulatedChangeLocks : public ChangeLocks {
 public:
  // Borrows both. Tools that are launched while the lock is held hold it until they have ended.
  SimulatedChangeLocks(SimulatedClock& clock, Tools& tools) : clock_(clock), tools_(tools) {}

  // Somebody else holds the lock from now on, for this long by the clock; without a time for ever. 0 ends it.
  void holdElsewhere(std::optional<std::chrono::milliseconds> time);
  // Whether this program, or a tool of its, holds it.
  bool isHeld() const { return !held_.expired(); }

  // Waiting moves the clock.
  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  bool isFree() const;

  SimulatedClock& clock_;
  Tools& tools_;
  std::weak_ptr<void> held_;                   // exists while somebody of this program holds the lock
  std::optional<int64_t> elsewhereUntil_ = 0;  // in microseconds of the clock; none for ever
};

}  // namespace norvik
