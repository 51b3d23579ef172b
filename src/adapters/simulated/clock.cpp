// Moves the clock.
#include "src/adapters/simulated/clock.h"

namespace norvik {

double SimulatedClock::absoluteTime() const {
  constexpr double kStart = 300'000'000;  // any day after 0 will do
  return kStart + static_cast<double>(microseconds_) / 1e6;
}

void SimulatedClock::sleep(uint32_t microseconds) {
  microseconds_ += microseconds;
  for (const SleepListener& listener : listeners_) listener(microseconds);
}

}  // namespace norvik
