// Keeps which computer is installed. Touches nothing else.
#include "src/server/mac/platform/platform.h"

#include <cstdlib>

namespace norvik {

namespace {
Platform* installed = nullptr;
}  // namespace

Platform& platform() {
  if (installed == nullptr) std::abort();
  return *installed;
}

Platform* installedPlatform() {
  return installed;
}

void installPlatform(Platform* computer) {
  installed = computer;
}

}  // namespace norvik
