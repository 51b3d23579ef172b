// The pane on the Mac: the adapter's platform, but for what draws and waits with the pane's own views.
#include "src/adapters/apple/apple_computer.h"
#include "src/frontends/prefpane/drawing_waits.h"
#include "src/frontends/prefpane/flushing_drawing_mac.h"
#include "src/frontends/prefpane/pane_computer.h"
#include "src/frontends/shared/change/stored_files.h"

namespace norvik::prefpane {

struct PaneComputer::Parts {
  Parts()
      : computer(appleOptions()),
        locks(computer.services().locks),
        flushing(drawing),
        processes(computer.posix, 1),
        bundles(computer.bundles),
        platform(platformOf(computer, *this)),
        recording(platform, computer.alerts, flushing, RecordingMode::real) {}

  static Platform platformOf(AppleComputer& computer, Parts& own) {
    const Platform all = computer.platform();
    return {.application = all.application,
            .alerts = all.alerts,
            .workspace = all.workspace,
            .notifications = all.notifications,
            .drawing = own.flushing,
            .runLoop = own.runLoop,
            .authorization = all.authorization,
            .files = all.files,
            .propertyLists = all.propertyLists,
            .processManager = all.processManager,
            .posix = own.processes,
            .host = all.host,
            .systemVersion = all.systemVersion,
            .bundles = own.bundles,
            .log = all.log,
            .assertions = all.assertions};
  }

  AppleComputer computer;
  NoChangeRecords records;  // nothing here reads a history
  DrawingLocks locks;
  AppKitDrawing drawing;
  FlushingDrawing flushing;
  AppKitRunLoop runLoop;
  AppKitProcesses processes;
  PaneBundles bundles;
  Platform platform;
  RecordingPlatform recording;
  BackgroundWork background;  // ends before what it works on
};

PaneComputer::PaneComputer() : parts_(std::make_unique<Parts>()) {}

PaneComputer::~PaneComputer() = default;

PaneBundles& PaneComputer::bundles() {
  return parts_->bundles;
}

SessionComputer PaneComputer::forSession() {
  std::vector<std::string> files;
  for (const StoredFile& file : storedFiles())
    files.push_back(parts_->computer.propertyLists.stringByExpandingTildeInPath(file.path));
  return sessionComputer({.platform = parts_->platform,
                          .recording = parts_->recording,
                          .services = parts_->computer.services(),
                          .records = parts_->records,
                          .state = nullptr,
                          .locks = parts_->locks,
                          .panels = parts_->computer.alerts,
                          .drawing = parts_->drawing,
                          .runLoop = parts_->runLoop,
                          .settingsFiles = files,
                          .background = parts_->background});
}

}  // namespace norvik::prefpane
