// A pane in a window of its own on the simulated computer, with the toolkit's real views, panels and events.
// For .mm files alone.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/prefpane/pane_session.h"
#include "tests/support/shipped_interface.h"

#import "src/frontends/prefpane/appkit.h"
#import "tests/frontends/prefpane/panel_answer.h"

namespace norvik::prefpane {

// Waits move the simulated clock, and the toolkit drops what is clicked meanwhile.
class SimulatedWaits : public AppKitProcesses {
 public:
  explicit SimulatedWaits(PosixProcesses& computer) : AppKitProcesses(computer, 200), computer_(computer) {}
  void usleep(uint32_t microseconds) override {
    if (waits) waits();
    computer_.usleep(microseconds);
    AppKitProcesses::usleep(microseconds);
  }

  // Called before each wait, as a person may do something then.
  std::function<void()> waits;

 private:
  PosixProcesses& computer_;
};

class SimulatedPane : public testing::Test {
 protected:
  // With stored settings that differ from what a missing file means, a stopped server, and a lock that opens
  // on request. The pane is not made yet.
  SimulatedPane();
  ~SimulatedPane() override;

  // Makes the pane and shows it as its host does.
  void open();
  // The same, unlocked and with the server running.
  void openEverything();

  // The view of a control, on whatever page it is.
  NSView* view(const std::string& outlet);
  // Presses the button of a control, on its page.
  void press(const std::string& outlet);
  void choosePage(const std::string& title);
  std::string shownPage();
  void type(const std::string& outlet, const std::string& words);
  // The text that a field of the view shows, with a title or words that contain this; nil for none.
  NSButton* buttonWith(const std::string& words);
  void pressButton(MessageAction action);
  MessageArea& messages() { return session->mainView()->messages(); }
  const WindowMessage& outcome() { return messages().message(MessageSubject::outcome); }
  // What a person reads above the pages; empty where nothing is shown.
  std::string read();

  // Lets the run loop handle what is due, for that many seconds.
  void run(double seconds);
  // Another program saves the server's file.
  void saveElsewhere(int64_t port, bool sound);
  // The files are looked at, as after a change of them.
  void noticeFiles();
  std::string stored(const std::string& path = "/etc/norvik/svr.cfg");
  bool launched(const std::string& words) const;
  // With the variable NORVIK_PICTURES, writes a picture of the window, or of the panel that is open, to the
  // folder that it names.
  void picture(const std::string& name);

  SimulatedComputer computer;
  InterfaceDescription interface = shippedInterface();
  std::vector<std::string> launches;
  std::function<bool(int64_t)> portInUse = [](int64_t port) { return port == 4321; };
  // Works at once, on this thread.
  int looks = 0;
  RunInBackground background = [this](const std::function<void()>& work, const std::function<void()>& then) {
    ++looks;
    work();
    then();
  };
  std::unique_ptr<PaneSession> session;
  NVKServerPrefs& pane() { return session->pane(); }
  NSWindow* window = nil;

  AppKitApplication application;
  AppKitAlertPanels panels;
  AppKitDrawing drawing;
  AppKitRunLoop runLoop;
  SimulatedWaits processes{computer.posix};

  NoChangeRecords records;

 private:
  SessionComputer forSession();
  Platform platform_;
  std::unique_ptr<RecordingPlatform> recording_;
};

}  // namespace norvik::prefpane
