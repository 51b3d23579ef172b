// One message in the band above the pages: its icon, what it says, a bar for what is under way, and a button
// for each thing that a person can do about it. A plain C++ header.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/frontends/prefpane/handles.h"
#include "src/frontends/shared/interface/window_messages.h"

namespace norvik::prefpane {

class MessageLine {
 public:
  // Empty and hidden.
  explicit MessageLine(double width);
  ~MessageLine();
  MessageLine(const MessageLine&) = delete;
  MessageLine& operator=(const MessageLine&) = delete;

  // An NSView of that width and of this height, whatever it shows.
  void* view() const { return view_.get(); }
  double height() const;
  // The buttons of what is shown, NSViews.
  const std::vector<Handle>& buttons() const { return buttons_; }

  // Shows the message, the first of so many. A sentence that does not fit is cut; it can then be read whole
  // in the details, which are offered for it.
  void showMessage(const WindowMessage& message, std::size_t waiting);
  // A bar that is `done` of `total` long.
  void showProgress(const std::string& sentence, int done, int total);
  void hide();

  // Called when a person presses a button: one of the message's; to close it; to see the next one.
  std::function<void(MessageAction)> acted;
  std::function<void()> closed;
  std::function<void()> next;

 private:
  void removeButtons();
  void addButton(const std::string& title, const std::string& help, const std::function<void()>& press);
  double addButtons(const WindowMessage& message, std::size_t waiting);
  bool fits(const std::string& sentence, double width);
  void present(MessageKind kind, const std::string& sentence, double width);

  Handle view_;
  Handle icon_;
  Handle sentence_;
  Handle bar_;
  std::vector<Handle> buttons_;
  std::vector<Handle> targets_;  // what the buttons call
};

}  // namespace norvik::prefpane
