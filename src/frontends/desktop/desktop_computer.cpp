// The window's platform interfaces, and the computer's for all others.
#include "src/frontends/desktop/desktop_computer.h"

#include "src/frontends/shared/change/stored_files.h"

namespace norvik::desktop {

DesktopComputer::DesktopComputer(const LinuxComputerOptions& options)
    : root_(options.root),
      computer_(painting(options)),
      locks_(computer_.services().locks, busy_),
      application_(busy_),
      runLoop_(busy_),
      processes_(computer_.posix, busy_, options.speed),
      platform_(computer_.platformFor(
          {application_, alerts_, workspace_, computer_.notifications, drawing_, runLoop_, processes_})) {
  installPlatform(&platform_);
}

// The window goes on painting while the system asks for a password; keys and clicks meanwhile are dropped, as
// in front of a panel.
LinuxComputerOptions DesktopComputer::painting(LinuxComputerOptions options) {
  options.whileAsking = [this] {
    busy_.enter();
    QCoreApplication::processEvents();
    busy_.leave();
  };
  return options;
}

DesktopComputer::~DesktopComputer() {
  installPlatform(nullptr);
}

ComputerServices DesktopComputer::services() {
  return withLocks(computer_.services(), locks_);
}

bool DesktopComputer::waitForTools(std::chrono::milliseconds limit) {
  LaunchedTools& tools = computer_.services().tools;
  return waitWhilePainting(
      busy_, [&tools] { return tools.wait(std::chrono::milliseconds(0)); }, limit, Input::kept);
}

void DesktopComputer::pause(std::chrono::milliseconds time) {
  waitWhilePainting(
      busy_, [] { return false; }, time, Input::kept);
}

std::vector<std::string> DesktopComputer::settingsFiles() {
  std::vector<std::string> places;
  for (const StoredFile& file : storedFiles())
    places.push_back(root_.onDisk(computer_.propertyLists.stringByExpandingTildeInPath(file.path)));
  return places;
}

void DesktopComputer::setWindow(QWidget* window) {
  application_.setWindow(window);
  alerts_.setWindow(window);
  drawing_.setWindow(window);
}

}  // namespace norvik::desktop
