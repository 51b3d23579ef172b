// The pane in its window on a computer, with the change transaction between them, from the first paint to the
// end.
#pragma once

#include <QSettings>
#include <QSocketNotifier>
#include <QString>
#include <memory>

#include "src/adapters/linux/file_watch.h"
#include "src/frontends/desktop/background_work.h"
#include "src/frontends/desktop/desktop_computer.h"
#include "src/frontends/desktop/end_requests.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/single_instance.h"
#include "src/frontends/desktop/window_back.h"
#include "src/frontends/desktop/window_changes.h"
#include "src/frontends/desktop/window_history.h"
#include "src/frontends/desktop/window_profile.h"
#include "src/frontends/desktop/window_reach.h"
#include "src/frontends/desktop/window_server.h"
#include "src/frontends/desktop/window_trial.h"
#include "src/frontends/shared/change/recording_platform.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/history/history.h"

class QSessionManager;

namespace norvik::desktop {

class Session {
 public:
  // `state` is what is remembered from one session to the next.
  Session(const LinuxComputerOptions& options, InterfaceDescription interface,
          std::unique_ptr<QSettings> state);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Whether a picture of every page could be written; else the path of the one that could not in `failed`.
  bool writePictures(const QString& folder, QString& failed);
  // Returns when the window is closed and the tools it started have ended: the status to exit with.
  int run(SingleInstance& instance);

 private:
  void showEmptyWindow();
  void fill();
  void wake();
  void watchFiles();
  void restorePage();
  void saveState();
  void bringToFront();
  void endWhenPossible();
  void askBeforeSessionEnds(QSessionManager& manager);
  FieldNote portProblem(const ControlDescription& field);

  DesktopComputer computer_;
  History history_;
  RecordingPlatform recording_;
  const InterfaceDescription interface_;
  NVKServerPrefs pane_;
  SettingsChange change_;
  SettingsWindow window_;
  const std::unique_ptr<QSettings> state_;
  std::unique_ptr<WindowChanges> changes_;
  std::unique_ptr<WindowBack> back_;
  std::unique_ptr<WindowProfile> profile_;
  std::unique_ptr<WindowHistory> pastChanges_;
  std::unique_ptr<WindowServer> server_;
  std::unique_ptr<WindowTrial> trial_;
  BackgroundWork background_;
  std::unique_ptr<WindowReach> reach_;
  LinuxFileWatch watch_;
  std::unique_ptr<QSocketNotifier> watched_;
};

}  // namespace norvik::desktop
