// How long a change on trial is still in force. Knows no clock of its own.
#pragma once

#include <chrono>
#include <functional>

namespace norvik {

// How long a trial may be, and is unless a person says otherwise.
inline constexpr std::chrono::seconds kShortestTrial{5};
inline constexpr std::chrono::seconds kLongestTrial{3600};
inline constexpr std::chrono::seconds kUsualTrial{60};

class Countdown {
 public:
  // A time that only grows, from any beginning; not the time of day, which may be set.
  using Clock = std::function<std::chrono::milliseconds()>;

  // Begins now.
  Countdown(Clock clock, std::chrono::seconds length)
      : clock_(std::move(clock)), end_(clock_() + std::chrono::milliseconds(length)) {}

  bool isOver() const { return clock_() >= end_; }
  // The whole seconds that are left, rounded up; 0 once it is over.
  std::chrono::seconds left() const {
    return isOver() ? std::chrono::seconds(0) : std::chrono::ceil<std::chrono::seconds>(end_ - clock_());
  }
  // Until it is over.
  std::chrono::milliseconds remaining() const {
    return isOver() ? std::chrono::milliseconds(0) : end_ - clock_();
  }

 private:
  Clock clock_;
  std::chrono::milliseconds end_;
};

}  // namespace norvik
