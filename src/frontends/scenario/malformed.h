// What a scenario does that no scenario can mean.
#pragma once

#include <stdexcept>

namespace norvik::scenario {

// Says what is wrong, without the place, which the runner adds.
struct Malformed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace norvik::scenario
