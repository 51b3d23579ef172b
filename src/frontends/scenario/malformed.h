// What is wrong with a scenario that cannot be run.
#pragma once

#include <stdexcept>

namespace norvik::scenario {

// Says what is wrong; the runner adds the place.
struct Malformed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace norvik::scenario
