// The computer itself, as a test has set it up.
#include "src/adapters/simulated/host.h"

#include <algorithm>
#include <cstring>

namespace norvik {

int SimulatedHost::gethostname(char* name, std::size_t size) {
  if (!name_) return -1;
  // With its terminator, if that fits.
  std::memcpy(name, name_->c_str(), std::min(name_->size() + 1, size));
  return 0;
}

OSErr SimulatedSystemVersion::Gestalt(OSType selector, int32_t& response) {
  constexpr std::array<OSType, 3> kSelectors = {fourCharCode("sys1"), fourCharCode("sys2"),
                                                fourCharCode("sys3")};
  for (std::size_t i = 0; i < kSelectors.size(); ++i) {
    if (kSelectors[i] != selector || !parts_[i]) continue;
    response = *parts_[i];
    return noErr;
  }
  return gestaltUndefSelectorErr;
}

}  // namespace norvik
