// The adapters that implement every platform interface.
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {

const std::vector<Adapter>& adapters() {
  static const std::vector<Adapter> all{{"simulated", makeSimulatedUnderTest},
                                        {"linux", [] { return makeLinuxUnderTest(); }}};
  return all;
}

}  // namespace norvik
