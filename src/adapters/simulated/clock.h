// The clock of the simulated computer, which only sleeping moves.
#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <utility>
#include <vector>

namespace norvik {

class SimulatedClock {
 public:
  // Called after the clock moved, with the length of the sleep.
  using SleepListener = std::function<void(uint32_t microseconds)>;

  // Since the computer was made.
  int64_t microseconds() const { return microseconds_; }
  // The time of day for run loops, in seconds of absolute time; well after 0.
  double absoluteTime() const;
  // The same for files, in seconds since 1970.
  std::time_t timeOfDay() const;

  void sleep(uint32_t microseconds);
  // Sleeps until that time since the computer was made; not at all where it has passed.
  void sleepUntil(int64_t microseconds);
  void addSleepListener(SleepListener listener) { listeners_.push_back(std::move(listener)); }

 private:
  int64_t microseconds_ = 0;
  std::vector<SleepListener> listeners_;
};

}  // namespace norvik
