// The host application's platform interfaces, and the computer's for all others.
//
// Property lists and the host's addresses are the computer's too, although the toolkit has both: GNUstep's
// reader turns dates into texts and cuts numbers beyond 63 bits, and other people's values must survive a
// save; and it knows no address but 127.0.0.1.
#include "src/frontends/prefpane/pane_computer.h"

#include <cstdlib>

namespace norvik::prefpane {

namespace {

LinuxComputerOptions chosenOptions() {
  const char* root = std::getenv("NORVIK_ROOT");
  return root != nullptr && *root != '\0' ? sandboxOptions(root) : systemOptions();
}

}  // namespace

PaneComputer::PaneComputer()
    : computer_(chosenOptions()),
      notifications_(computer_.notifications),
      bundles_(computer_.bundles),
      platform_(computer_.platformFor({application_, alerts_, workspace_, notifications_, drawing_, runLoop_,
                                       computer_.posix, &bundles_})) {
  installPlatform(&platform_);
}

PaneComputer::~PaneComputer() {
  installPlatform(nullptr);
}

}  // namespace norvik::prefpane
