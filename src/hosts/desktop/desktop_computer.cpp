// Which adapter stands behind which port.
#include "desktop_computer.h"

namespace norvik::desktop {

DesktopComputer::DesktopComputer(const LinuxComputerOptions& options)
    : computer_(options),
      application_(busy_),
      runLoop_(busy_),
      processes_(computer_.posix, busy_, options.speed),
      platform_{application_,
                alerts_,
                workspace_,
                computer_.notifications,
                drawing_,
                runLoop_,
                computer_.authorization,
                computer_.files,
                computer_.propertyLists,
                computer_.processManager,
                processes_,
                computer_.host,
                computer_.systemVersion,
                computer_.bundles,
                computer_.log,
                computer_.assertions} {
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
