// The application that hosts the pane on the simulated computer: its window, its alert panels, its
// activation.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include "src/adapters/simulated/effects.h"
#include "src/server/mac/platform/application.h"

namespace norvik {

class SimulatedApplication : public HostApplication {
 public:
  // The main window is at the origin; none for no main window.
  void setMainWindow(std::optional<Size> size) { window_ = size; }
  // Notifies every observer that still exists, in the order in which they registered.
  void becomeActive();

  std::optional<Rect> mainWindowFrame() override;
  // Calls at once, as everything here is on the main thread.
  void performOnMainThread(std::function<void()> operation, bool waitUntilDone) override;
  Color windowBackgroundColor() override;
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) override;

 private:
  std::optional<Size> window_ = Size{800, 600};
  std::vector<std::weak_ptr<ActivationObserver>> observers_;
};

// Thrown through the caller by an alert panel without an answer, which a test forgot to give.
struct UnansweredAlert : std::runtime_error {
  UnansweredAlert() : std::runtime_error("an alert without an answer") {}
};

class SimulatedAlertPanels : public AlertPanels {
 public:
  explicit SimulatedAlertPanels(const EffectReporter& effects) : effects_(effects) {}

  // The result of the next panel that does not have one yet.
  void addAnswer(int result) { answers_.push_back(result); }

  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override;

 private:
  const EffectReporter& effects_;
  std::deque<int> answers_;
};

}  // namespace norvik
