// One pane from its making to its end: the model, its view, and, for the main pane of the process, the change
// transaction between it and the computer. A plain C++ header; knows no class of the toolkit. Main thread
// only.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/frontends/prefpane/appkit_platform.h"
#include "src/frontends/prefpane/pane_changes.h"
#include "src/frontends/prefpane/pane_reach.h"
#include "src/frontends/prefpane/pane_server.h"
#include "src/frontends/prefpane/pane_trial.h"
#include "src/frontends/prefpane/settings_watch.h"
#include "src/frontends/prefpane/termination.h"

namespace norvik::prefpane {

// The computer that a pane works on. Borrowed; the recording is installed.
struct SessionComputer {
  Platform& platform;  // without the recording
  RecordingPlatform& recording;
  ComputerServices services;
  ChangeRecords& records;
  UserState* state;  // null where nothing is kept for the user
  AlertPanels& panels;
  AppKitDrawing& drawing;
  AppKitRunLoop& runLoop;
  // Block until the tools have ended, at most until the limit, or for a time.
  std::function<bool(std::chrono::milliseconds limit)> waitForTools;
  std::function<void(std::chrono::milliseconds time)> pause;
  PortInUse portInUse;
  std::vector<std::string> settingsFiles;  // where they are on the disk; they are watched
  RunInBackground background;
};

class PaneSession {
 public:
  PaneSession(const SessionComputer& computer, const InterfaceDescription& interface);
  ~PaneSession();
  PaneSession(const PaneSession&) = delete;
  PaneSession& operator=(const PaneSession&) = delete;

  // The NSView. The first call wakes the pane and makes it.
  void* view();

  // The host's calls. The view exists.
  void mainViewDidLoad() { pane_.mainViewDidLoad(); }
  void willSelect();
  void didSelect();
  void willUnselect() { pane_.willUnselect(); }
  void didUnselect();

  NVKServerPrefs& pane() { return pane_; }
  // Null before view().
  MainView* mainView() { return view_.get(); }
  // Looks at the settings files as if they had changed.
  void filesChanged();

 private:
  bool isMain() const { return __main_pane == &pane_; }
  static void setSeen(bool seen);
  void beMainPane();
  void hostEnds();

  SessionComputer computer_;
  const InterfaceDescription& interface_;
  NVKServerPrefs pane_;
  SettingsChange change_;
  std::unique_ptr<MainView> view_;
  std::unique_ptr<PaneChanges> changes_;
  std::unique_ptr<PaneServer> server_;
  std::unique_ptr<PaneReach> reach_;
  std::unique_ptr<PaneTrial> trial_;
  std::unique_ptr<SettingsWatch> files_;
  std::unique_ptr<TerminationWatch> termination_;
};

}  // namespace norvik::prefpane
