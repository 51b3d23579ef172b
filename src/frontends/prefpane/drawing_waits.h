// Waits of the pane for the computer, in which its windows are drawn. A plain C++ header. Main thread only.
#pragma once

#include "src/adapters/services/computer_services.h"
#include "src/frontends/prefpane/background_work.h"
#include "src/frontends/prefpane/pane_session.h"

namespace norvik::prefpane {

// The computer's lock of changes, which is held as long as a save runs: windows are drawn while it is waited
// for, and the system does not kill the host while it is held.
class DrawingLocks : public ChangeLocks {
 public:
  explicit DrawingLocks(ChangeLocks& computer) : computer_(computer) {}
  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  ChangeLocks& computer_;
};

// The computer as a session waits for it. All that it names is borrowed.
struct ComputerOfSession {
  Platform& platform;
  RecordingPlatform& recording;
  ComputerServices services;
  ChangeRecords& records;
  UserState* state;
  DrawingLocks& locks;  // in place of the services'
  AlertPanels& panels;
  AppKitDrawing& drawing;
  AppKitRunLoop& runLoop;
  std::vector<std::string> settingsFiles;
  BackgroundWork& background;
};
SessionComputer sessionComputer(const ComputerOfSession& computer);

}  // namespace norvik::prefpane
