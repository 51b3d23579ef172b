// Moves the clock.
#include "src/adapters/simulated/clock.h"

#include <algorithm>
#include <limits>

namespace norvik {

double SimulatedClock::absoluteTime() const {
  constexpr double kStart = 300'000'000;  // any day after 0 will do
  return kStart + static_cast<double>(microseconds_) / 1e6;
}

std::time_t SimulatedClock::timeOfDay() const {
  constexpr std::time_t kAbsoluteTimeOrigin = 978'307'200;  // of absolute time: the beginning of 2001
  return kAbsoluteTimeOrigin + static_cast<std::time_t>(absoluteTime());
}

void SimulatedClock::sleep(uint32_t microseconds) {
  microseconds_ += microseconds;
  for (const SleepListener& listener : listeners_) listener(microseconds);
}

void SimulatedClock::sleepUntil(int64_t microseconds) {
  constexpr int64_t kLongestSleep = std::numeric_limits<uint32_t>::max();
  while (microseconds_ < microseconds) {
    sleep(static_cast<uint32_t>(std::min(microseconds - microseconds_, kLongestSleep)));
  }
}

}  // namespace norvik
