// The window's platform interfaces, and the computer's for all others.
#include "src/frontends/desktop/desktop_computer.h"

namespace norvik::desktop {

DesktopComputer::DesktopComputer(const LinuxComputerOptions& options)
    : computer_(options),
      application_(busy_),
      runLoop_(busy_),
      processes_(computer_.posix, busy_, options.speed),
      platform_(computer_.platformFor(
          {application_, alerts_, workspace_, computer_.notifications, drawing_, runLoop_, processes_})) {
  installPlatform(&platform_);
}

DesktopComputer::~DesktopComputer() {
  installPlatform(nullptr);
}

void DesktopComputer::setWindow(QWidget* window) {
  application_.setWindow(window);
  alerts_.setWindow(window);
  drawing_.setWindow(window);
}

}  // namespace norvik::desktop
