// Keeps which computer is installed. Touches nothing else.
#include "src/server/mac/platform/platform.h"

#include <cstdlib>

namespace norvik {

namespace {
Platform* installed = nullptr;
}  // namespace

Platform& platform() {
  // Ends the program and its coverage count with it; PlatformDeathTest pins it.
  if (installed == nullptr) std::abort();  // GCOVR_EXCL_LINE
  return *installed;
}

Platform* installedPlatform() {
  return installed;
}

void installPlatform(Platform* computer) {
  installed = computer;
}

}  // namespace norvik
