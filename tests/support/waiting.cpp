// Polls often at first, as most conditions hold within a millisecond, and then less and less often.
#include "tests/support/waiting.h"

#include <algorithm>
#include <thread>

namespace norvik {

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  constexpr std::chrono::microseconds kLongestPause = std::chrono::milliseconds(10);
  std::chrono::microseconds pause(200);
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(pause);
    pause = std::min(2 * pause, kLongestPause);
  }
  return true;
}

}  // namespace norvik
