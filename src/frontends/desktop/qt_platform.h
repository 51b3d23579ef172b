// The platform interfaces that belong to the window, in Qt: run loop and timer, alert panels, web addresses,
// main window, forced drawing, and the waits during which the window must paint. The computer provides all
// others.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "src/adapters/services/change_locks.h"
#include "src/server/mac/platform/platform.h"

namespace norvik::desktop {

// While a start or stop of the server blocks, the window paints and responds to the window system, but input,
// timers and activations are held back. Counted, so that waits may nest.
class Busy : public QObject {
 public:
  Busy();
  ~Busy() override;

  bool isBusy() const { return depth_ > 0; }
  void enter() { ++depth_; }
  void leave() { --depth_; }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  int depth_ = 0;
};

// What becomes of keys and clicks while the window only paints.
enum class Input {
  dropped,  // a question may come next, which they must not answer
  kept,     // for when it is over
};
// Waits until something is done, at most until the limit, and lets the window paint meanwhile. Asks now and
// then. Whether it was done.
bool waitWhilePainting(Busy& busy, const std::function<bool()>& isDone, std::chrono::milliseconds limit,
                       Input input);

// The lock of changes, waited for while the window paints.
class PaintingLocks : public ChangeLocks {
 public:
  // Borrows both.
  PaintingLocks(ChangeLocks& locks, Busy& busy) : locks_(locks), busy_(busy) {}
  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  ChangeLocks& locks_;
  Busy& busy_;
};

class QtApplication : public HostApplication {
 public:
  explicit QtApplication(const Busy& busy) : busy_(busy) {}

  // To be set when the window exists: the pane is made before it.
  void setWindow(QWidget* window) { window_ = window; }

  std::optional<Rect> mainWindowFrame() override;
  void performOnMainThread(std::function<void()> operation, bool waitUntilDone) override;
  Color windowBackgroundColor() override;
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) override;

 private:
  void notify(const std::weak_ptr<ActivationObserver>& observer);

  const Busy& busy_;
  QPointer<QWidget> window_;
  QObject life_;  // of the connections to this
};

class QtAlertPanels : public AlertPanels {
 public:
  void setWindow(QWidget* window) { window_ = window; }
  // Escape and the close button close the panel, with the answer NSAlertOtherReturn.
  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override;

  // The answer to a question that a person has answered already, in other words; then no panel comes up.
  // None, and nothing, mean that the panel asks.
  std::function<std::optional<int>()> answered;

 private:
  QPointer<QWidget> window_;
};

class QtWorkspace : public Workspace {
 public:
  void openURL(std::string_view url) override;
};

class QtDrawing : public Drawing {
 public:
  void setWindow(QWidget* window) { window_ = window; }
  void display(Control& control) override;
  void displayIfNeeded(View& view) override;

 private:
  QPointer<QWidget> window_;
};

class QtRunLoop : public RunLoop {
 public:
  explicit QtRunLoop(Busy& busy) : busy_(busy) {}

  CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval, CFRunLoopTimerCallBack callback,
                                         const CFRunLoopTimerContext& context) override;
  void CFRunLoopAddTimer(CFRunLoopTimerRef timer) override;
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) override;
  void CFRelease(CFRunLoopTimerRef timer) override;
  void runOnceInDefaultMode() override;

  // Called after each tick that was not held back. All are while an alert panel is up: a panel runs the loop
  // in a mode of its own.
  std::function<void()> ticked;

 private:
  Busy& busy_;
};

// The computer's own processes, except for the wait, during which the window paints.
class QtProcesses : public PosixProcesses {
 public:
  QtProcesses(PosixProcesses& computer, Busy& busy, double speed)
      : computer_(computer), busy_(busy), speed_(speed) {}

  KillResult kill(int32_t pid, Signal signal) override { return computer_.kill(pid, signal); }
  int32_t getpid() override { return computer_.getpid(); }
  void usleep(uint32_t microseconds) override;

 private:
  PosixProcesses& computer_;
  Busy& busy_;
  double speed_;  // waits are this many times shorter
};

}  // namespace norvik::desktop
