// The application that hosts the pane: its windows, panels and views, its notifications and the browser. A
// plain C++ header. Main thread only, as the interfaces require.
#pragma once

#include <functional>

#include "src/adapters/services/computer_services.h"
#include "src/server/mac/platform/application.h"

namespace norvik {

class AppleApplication : public HostApplication {
 public:
  // None while the application is in the back, and always in a program that only hosts panes for another.
  std::optional<Rect> mainWindowFrame() override;
  // In the run loop's common modes, so also under a panel.
  void performOnMainThread(std::function<void()> operation, bool waitUntilDone) override;
  // The clear colour where the system's cannot be given in red, green and blue.
  Color windowBackgroundColor() override;
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) override;
};

// By NSAlert, which follows NSRunAlertPanel.
class AppleAlertPanels : public AlertPanels {
 public:
  // Timers of the run loop's default mode do not fire meanwhile.
  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override;
};

class AppleWorkspace : public Workspace {
 public:
  // Nothing is opened for a text that is no address.
  void openURL(std::string_view url) override;
};

class AppleNotificationCenter : public DistributedNotificationCenter, public NotificationDelivery {
 public:
  void postNotificationName(const char* name, const char* object, unsigned options) override;
  // Whether the toolkit took it: the system does not say more.
  bool lastWasDelivered() const override { return lastWasTaken_; }

 private:
  bool lastWasTaken_ = true;
};

class AppleDrawing : public Drawing {
 public:
  // The toolkit's view of a control or a view of the model, an NSView, borrowed; null while it has none.
  std::function<void*(Control& control)> viewOfControl;
  std::function<void*(View& view)> viewOfView;

  void display(Control& control) override;
  void displayIfNeeded(View& view) override;
};

}  // namespace norvik
