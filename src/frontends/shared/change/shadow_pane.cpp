// The platform of a pane that nobody sees: no windows, no panels, no timer; all effects withheld.
#include "src/frontends/shared/change/shadow_pane.h"

#include <utility>

namespace norvik {

namespace {

class NoApplication : public HostApplication {
 public:
  std::optional<Rect> mainWindowFrame() override { return std::nullopt; }
  void performOnMainThread(std::function<void()> operation, bool /*waitUntilDone*/) override { operation(); }
  Color windowBackgroundColor() override { return {}; }
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> /*observer*/) override {}
};

// Nobody is asked: what is only looked at is neither declined nor accepted, so a question of the pane gets
// the answer of its default button.
class DefaultAnswers : public AlertPanels {
 public:
  int NSRunAlertPanel(const char* /*title*/, const char* /*message*/, const char* /*defaultButton*/,
                      const char* /*alternateButton*/, const char* /*otherButton*/) override {
    return NSAlertDefaultReturn;
  }
};

class NoDrawing : public Drawing {
 public:
  void display(Control& /*control*/) override {}
  void displayIfNeeded(View& /*view*/) override {}
};

class NoRunLoop : public RunLoop {
 public:
  CFRunLoopTimerRef CFRunLoopTimerCreate(double /*fireDate*/, double /*interval*/,
                                         CFRunLoopTimerCallBack /*callback*/,
                                         const CFRunLoopTimerContext& /*context*/) override {
    return nullptr;
  }
  void CFRunLoopAddTimer(CFRunLoopTimerRef /*timer*/) override {}
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef /*timer*/) override {}
  void CFRelease(CFRunLoopTimerRef /*timer*/) override {}
  void runOnceInDefaultMode() override {}
};

// Takes the place of the main pane for as long as it lives.
class MainPanePlace {
 public:
  MainPanePlace() : before_(std::exchange(__main_pane, nullptr)), keeper_(__gc_keeper) {}
  ~MainPanePlace() {
    __main_pane = before_;
    __gc_keeper = keeper_;
  }
  MainPanePlace(const MainPanePlace&) = delete;
  MainPanePlace& operator=(const MainPanePlace&) = delete;

 private:
  NVKServerPrefs* before_;
  NVKServerPrefs* keeper_;
};

}  // namespace

struct ShadowPane::Parts {
  Parts(Platform& computer, const InterfaceDescription& interface)
      : quiet{application,
              alerts,
              computer.workspace,
              computer.notifications,
              drawing,
              runLoop,
              computer.authorization,
              computer.files,
              computer.propertyLists,
              computer.processManager,
              computer.posix,
              computer.host,
              computer.systemVersion,
              computer.bundles,
              computer.log,
              computer.assertions},
        recording(quiet, alerts, drawing, RecordingMode::pretending),
        pane(interface) {}

  MainPanePlace place;  // first made and last to go
  NoApplication application;
  DefaultAnswers alerts;
  NoDrawing drawing;
  NoRunLoop runLoop;
  Platform quiet;
  RecordingPlatform recording;
  NVKServerPrefs pane;
};

ShadowPane::ShadowPane(Platform& computer, const InterfaceDescription& interface, bool unlocked)
    : parts_(std::make_unique<Parts>(computer, interface)) {
  parts_->pane.awakeFromNib();
  if (unlocked) parts_->pane.authorize(true, false);
  parts_->recording.forget();
}

ShadowPane::~ShadowPane() {
  parts_->pane.destroy();
}

NVKServerPrefs& ShadowPane::pane() {
  return parts_->pane;
}

const Effects& ShadowPane::effects() const {
  return parts_->recording.effects();
}

}  // namespace norvik
