// The pane on Linux: the host application's platform interfaces over the toolkit, and the computer's for all
// others.
//
// Property lists and the host's addresses are the computer's too, although the toolkit has both: GNUstep's
// reader turns dates into texts and cuts numbers beyond 63 bits, and other people's values must survive a
// save; and it knows no address but 127.0.0.1.
#include <cstdlib>

#include "src/adapters/linux/linux_computer.h"
#include "src/adapters/posix/root_folder.h"
#include "src/frontends/prefpane/drawing_waits.h"
#include "src/frontends/prefpane/input.h"
#include "src/frontends/prefpane/pane_computer.h"
#include "src/frontends/shared/change/stored_files.h"
#include "src/frontends/shared/history/history.h"

namespace norvik::prefpane {

namespace {

LinuxComputerOptions chosenOptions() {
  const char* root = std::getenv("NORVIK_ROOT");
  return root != nullptr && *root != '\0' ? sandboxOptions(root) : systemOptions();
}

constexpr double kBetweenLooks = 0.02;  // seconds for which windows are drawn before the answer is looked for

// Windows are drawn while the system asks for a password. What is clicked and typed there meanwhile is
// dropped, as in front of a panel.
LinuxComputerOptions drawingWhileAsking(LinuxComputerOptions options) {
  options.whileAsking = [] { waitDroppingInput(kBetweenLooks); };
  return options;
}

}  // namespace

struct PaneComputer::Parts {
  explicit Parts(const LinuxComputerOptions& options)
      : root(options.root),
        computer(drawingWhileAsking(options)),
        history(computer.userState, "pane"),
        locks(computer.services().locks),
        notifications(computer.notifications),
        processes(computer.posix, options.speed),
        bundles(computer.bundles),
        platform(computer.platformFor(
            {application, panels, workspace, notifications, drawing, runLoop, processes, &bundles})),
        recording(platform, panels, drawing, RecordingMode::real) {}

  RootFolder root;
  LinuxComputer computer;
  History history;
  DrawingLocks locks;
  AppKitApplication application;
  AppKitAlertPanels panels;
  AppKitWorkspace workspace;
  AppKitNotifications notifications;
  AppKitDrawing drawing;
  AppKitRunLoop runLoop;
  AppKitProcesses processes;
  PaneBundles bundles;
  Platform platform;
  RecordingPlatform recording;
  BackgroundWork background;  // ends before what it works on
};

PaneComputer::PaneComputer() : PaneComputer(chosenOptions()) {}

PaneComputer::PaneComputer(const LinuxComputerOptions& options) : parts_(std::make_unique<Parts>(options)) {}

PaneComputer::~PaneComputer() = default;

PaneBundles& PaneComputer::bundles() {
  return parts_->bundles;
}

SessionComputer PaneComputer::forSession() {
  std::vector<std::string> files;
  for (const StoredFile& file : storedFiles())
    files.push_back(
        parts_->root.onDisk(parts_->computer.propertyLists.stringByExpandingTildeInPath(file.path)));
  return sessionComputer({.platform = parts_->platform,
                          .recording = parts_->recording,
                          .services = parts_->computer.services(),
                          .records = parts_->history,
                          .state = &parts_->computer.userState,
                          .locks = parts_->locks,
                          .panels = parts_->panels,
                          .drawing = parts_->drawing,
                          .runLoop = parts_->runLoop,
                          .settingsFiles = files,
                          .background = parts_->background});
}

}  // namespace norvik::prefpane
