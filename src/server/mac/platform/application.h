// Platform interfaces to the application that hosts the pane: its windows and panels, its notifications, and
// the drawing of views that cannot wait for the next drawing cycle. Called on the main thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/geometry.h"

namespace norvik {

class View;
class Control;

// Notified when the application comes to the front.
class ActivationObserver {
 public:
  virtual ~ActivationObserver() = default;
  virtual void applicationDidBecomeActive() = 0;
};

class HostApplication {
 public:
  virtual ~HostApplication() = default;

  // The frame of the application's main window, in points; nothing while it has none, as in the background,
  // or always in a program that only hosts panes for another.
  virtual std::optional<Rect> mainWindowFrame() = 0;
  // Calls `operation` on the main thread: before returning if `waitUntilDone` is true, otherwise by the end
  // of the run loop's next pass at the latest.
  virtual void performOnMainThread(std::function<void()> operation, bool waitUntilDone) = 0;
  // The colour that windows of this application have behind their controls.
  virtual Color windowBackgroundColor() = 0;
  // Registers for NSApplicationDidBecomeActiveNotification. The registration is never removed; it reaches the
  // observer only while the observer is alive. An observer registered twice is notified twice.
  virtual void observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) = 0;
};

// The answers of an alert panel.
inline constexpr int NSAlertDefaultReturn = 1;
inline constexpr int NSAlertAlternateReturn = 0;
inline constexpr int NSAlertOtherReturn = -1;

class AlertPanels {
 public:
  virtual ~AlertPanels() = default;

  // Shows a modal panel and blocks until it is answered. The texts are shown as they are, without format
  // directives. A null button is not shown; without a default button the toolkit shows its own. Returns 1, 0
  // or -1 for the default, alternate and other button.
  virtual int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                              const char* alternateButton, const char* otherButton) = 0;
};

class Workspace {
 public:
  virtual ~Workspace() = default;

  // Opens the address in the default browser, without waiting for it. The system shows a failure.
  virtual void openURL(std::string_view url) = 0;
};

inline constexpr unsigned NSNotificationDeliverImmediately = 1u << 0;
inline constexpr unsigned NSNotificationPostToAllSessions = 1u << 1;

class DistributedNotificationCenter {
 public:
  virtual ~DistributedNotificationCenter() = default;

  // Posts a notification without user information to the processes that listen for `name`; `object` may be
  // null. Does not wait for them. Failures are not reported: there may be no listener either.
  virtual void postNotificationName(const char* name, const char* object, unsigned options) = 0;
};

class Drawing {
 public:
  virtual ~Drawing() = default;

  // Draws the control at once, before returning.
  virtual void display(Control& control) = 0;
  // Draws at once what needs drawing of the view itself, if anything does.
  virtual void displayIfNeeded(View& view) = 0;
};

}  // namespace norvik
