// The lock is an object that its holders share.
#include "src/adapters/simulated/change_locks.h"

#include <algorithm>

namespace norvik {

namespace {

using std::chrono::microseconds;

class SimulatedHeldLock : public HeldLock {
 public:
  explicit SimulatedHeldLock(std::shared_ptr<void> share) : share_(std::move(share)) {}

 private:
  std::shared_ptr<void> share_;
};

}  // namespace

void SimulatedChangeLocks::holdElsewhere(std::optional<std::chrono::milliseconds> time) {
  elsewhereUntil_.reset();
  if (time) elsewhereUntil_ = clock_.microseconds() + microseconds(*time).count();
}

bool SimulatedChangeLocks::isFree() const {
  return !isHeld() && elsewhereUntil_ && *elsewhereUntil_ <= clock_.microseconds();
}

std::unique_ptr<HeldLock> SimulatedChangeLocks::lock(std::chrono::milliseconds limit) {
  constexpr int64_t kPause = 10'000;
  const int64_t end = clock_.microseconds() + microseconds(limit).count();
  while (!isFree()) {
    if (clock_.microseconds() >= end) return nullptr;
    clock_.sleepUntil(std::min(end, clock_.microseconds() + kPause));
  }
  const auto share = std::make_shared<int>();
  held_ = share;
  tools_.keepWhileRunning(share);
  return std::make_unique<SimulatedHeldLock>(share);
}

}  // namespace norvik
