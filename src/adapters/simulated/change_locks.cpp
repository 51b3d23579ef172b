// A lock is a mark that it is held, and the time until which somebody else has it.
#include "src/adapters/simulated/change_locks.h"

#include <algorithm>

namespace norvik {

namespace {

using std::chrono::microseconds;

// Takes the mark away at its end.
class Held : public HeldLock {
 public:
  explicit Held(std::shared_ptr<bool> mark) : mark_(std::move(mark)) { *mark_ = true; }
  ~Held() override { *mark_ = false; }

 private:
  std::shared_ptr<bool> mark_;
};

}  // namespace

void SimulatedChangeLocks::holdElsewhere(std::optional<std::chrono::milliseconds> time) {
  elsewhereUntil_.reset();
  if (time) elsewhereUntil_ = clock_.microseconds() + microseconds(*time).count();
}

std::optional<int64_t> SimulatedChangeLocks::freeAt() const {
  if (*held_ || !elsewhereUntil_) return std::nullopt;
  return std::max(*elsewhereUntil_, clock_.microseconds());
}

std::unique_ptr<HeldLock> SimulatedChangeLocks::lock(std::chrono::milliseconds limit) {
  const int64_t end = clock_.microseconds() + microseconds(limit).count();
  const std::optional<int64_t> free = freeAt();
  clock_.sleepUntil(std::min(end, free.value_or(end)));
  // Whoever was told that the clock moved may have taken or given the lock.
  const std::optional<int64_t> freeNow = freeAt();
  if (!freeNow || *freeNow > clock_.microseconds()) return nullptr;
  return std::make_unique<Held>(held_);
}

}  // namespace norvik
