// The platform interfaces of the application that hosts the pane, over the toolkit: its windows, alert
// panels, run loop and notifications. A plain C++ header. Main thread only, as the interfaces require.
#pragma once

#include <functional>

#include "src/server/mac/platform/application.h"
#include "src/server/mac/platform/processes.h"
#include "src/server/mac/platform/run_loop.h"

namespace norvik::prefpane {

class AppKitApplication : public HostApplication {
 public:
  std::optional<Rect> mainWindowFrame() override;
  void performOnMainThread(std::function<void()> operation, bool waitUntilDone) override;
  Color windowBackgroundColor() override;
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) override;
};

class AppKitAlertPanels : public AlertPanels {
 public:
  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override;
};

class AppKitWorkspace : public Workspace {
 public:
  // Where the computer has nothing that opens it, a panel says what the address is.
  void openURL(std::string_view url) override;
};

// Posts in the toolkit's own way and in the computer's, as a menu agent may listen to either.
class AppKitNotifications : public DistributedNotificationCenter {
 public:
  explicit AppKitNotifications(DistributedNotificationCenter& computer) : computer_(computer) {}
  void postNotificationName(const char* name, const char* object, unsigned options) override;

 private:
  DistributedNotificationCenter& computer_;
};

class AppKitDrawing : public Drawing {
 public:
  // Draw a control or a view of the model. Set once there is a view; until then nothing is drawn.
  std::function<void(Control& control)> displayControl;
  std::function<void(View& view)> displayView;

  void display(Control& control) override {
    if (displayControl) displayControl(control);
  }
  void displayIfNeeded(View& view) override {
    if (displayView) displayView(view);
  }
};

class AppKitRunLoop : public RunLoop {
 public:
  CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval, CFRunLoopTimerCallBack callback,
                                         const CFRunLoopTimerContext& context) override;
  void CFRunLoopAddTimer(CFRunLoopTimerRef timer) override;
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) override;
  void CFRelease(CFRunLoopTimerRef timer) override;
  // Discards what a person clicked or typed meanwhile: it was meant for a panel that did not respond.
  void runOnceInDefaultMode() override;

  // Called after each tick.
  std::function<void()> ticked;
};

// The computer's processes, with waits in which the window is drawn and what a person clicks and types is
// dropped.
class AppKitProcesses : public PosixProcesses {
 public:
  // Every wait is divided by `speed`, which is above 0.
  AppKitProcesses(PosixProcesses& computer, double speed) : computer_(computer), speed_(speed) {}

  KillResult kill(int32_t pid, Signal signal) override { return computer_.kill(pid, signal); }
  int32_t getpid() override { return computer_.getpid(); }
  void usleep(uint32_t microseconds) override;

 private:
  PosixProcesses& computer_;
  double speed_;
};

}  // namespace norvik::prefpane
