// The computer with the toolkit's run loop, for that platform interface's contract.
#include "src/frontends/prefpane/appkit_platform.h"
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {

const std::vector<Adapter>& adapters() {
  static const std::vector<Adapter> all{{"appkit", [] {
                                           static prefpane::AppKitRunLoop loop;
                                           return makeLinuxUnderTest(&loop);
                                         }}};
  return all;
}

}  // namespace norvik
