// A panel of this front end that keeps everything else waiting: its contents, and a row of buttons below.
// For .mm files alone.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "src/frontends/prefpane/handles.h"

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

class ModalPanel {
 public:
  // As large as the contents, which it keeps, and their margins need.
  ModalPanel(std::string_view title, NSView* contents);
  ~ModalPanel();
  ModalPanel(const ModalPanel&) = delete;
  ModalPanel& operator=(const ModalPanel&) = delete;

  // A button at the left that leaves the panel open; returned to be enabled and disabled.
  NSButton* addCommand(std::string_view title, const std::function<void()>& press);
  // A button at the right, each further one to the left of those before it, that closes the panel with this
  // result. Return presses the first one, Escape the one with the result `kEscaped`, which each panel has.
  NSButton* addAnswer(std::string_view title, int result);
  static constexpr int kEscaped = 0;

  // Shows the panel until it is answered; blocks. `first` gets the keyboard; nil for none.
  int run(NSView* first);
  // Closes it with that result.
  void close(int result);

 private:
  NSButton* add(std::string_view title, const std::function<void()>& press);

  Handle window_;
  std::vector<Handle> buttons_;
  std::vector<Handle> targets_;  // what they call
  double left_, right_;
  bool hasDefault_ = false;
  int result_ = kEscaped;
};

}  // namespace norvik::prefpane
