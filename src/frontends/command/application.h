// The application and the workspace of a front end without windows.
#pragma once

#include <ostream>

#include "src/server/mac/platform/application.h"

namespace norvik::command {

// Has no window and never comes to the front.
class TerminalApplication : public HostApplication {
 public:
  std::optional<Rect> mainWindowFrame() override { return std::nullopt; }
  // At once: there is only one thread, and a run loop only while something is watched.
  void performOnMainThread(std::function<void()> operation, bool /*waitUntilDone*/) override { operation(); }
  Color windowBackgroundColor() override { return {}; }
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> /*observer*/) override {}
};

// Prints the address instead of opening it, as there may be no browser where there is no screen.
class TerminalWorkspace : public Workspace {
 public:
  // Borrows the stream.
  explicit TerminalWorkspace(std::ostream& out) : out_(out) {}
  void openURL(std::string_view url) override { out_ << url << '\n'; }

 private:
  std::ostream& out_;
};

}  // namespace norvik::command
