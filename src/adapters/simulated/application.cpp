// The application as a test has set it up.
#include "src/adapters/simulated/application.h"

#include "src/adapters/simulated/text_form.h"

namespace norvik {

void SimulatedApplication::becomeActive() {
  // A copy, because an observer may add or end another one.
  const auto observers = observers_;
  for (const auto& registered : observers) {
    if (const auto observer = registered.lock()) observer->applicationDidBecomeActive();
  }
}

std::optional<Rect> SimulatedApplication::mainWindowFrame() {
  if (!window_) return std::nullopt;
  return Rect{0, 0, window_->width, window_->height};
}

void SimulatedApplication::performOnMainThread(std::function<void()> operation, bool) {
  operation();
}

Color SimulatedApplication::windowBackgroundColor() {
  return {0.93, 0.93, 0.93, 1};
}

void SimulatedApplication::observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) {
  observers_.push_back(std::move(observer));
}

int SimulatedAlertPanels::NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                                          const char* alternateButton, const char* otherButton) {
  if (answers_.empty()) throw UnansweredAlert();
  const int result = answers_.front();
  answers_.pop_front();
  effects_.report(EffectKind::alert, "alert " + quotedOrNull(title) + ' ' + quotedOrNull(message) +
                                         " default=" + quotedOrNull(defaultButton) +
                                         " alternate=" + quotedOrNull(alternateButton) + " other=" +
                                         quotedOrNull(otherButton) + " -> " + std::to_string(result));
  return result;
}

}  // namespace norvik
