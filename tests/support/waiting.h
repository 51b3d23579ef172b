// Waiting for a condition instead of sleeping for a fixed time.
#pragma once

#include <chrono>
#include <functional>

namespace norvik {

// How long a test waits for something that normally takes a moment. The one limit of all tests; it is
// generous, as it is only reached when a test fails.
inline constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(10);

// Calls the condition, blocking between the calls, until it holds. Calls it at least once. Returns false when
// it does not hold within the limit. Does not process events of a toolkit.
[[nodiscard]] bool eventually(const std::function<bool()>& condition,
                              std::chrono::milliseconds limit = kPatience);

}  // namespace norvik
