// Acts as a person does in the next panel that keeps everything else waiting. For .mm files alone.
#pragma once

#include <functional>
#include <string>

#include "src/frontends/prefpane/handles.h"

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

class InPanel {
 public:
  // Once, when the panel is there. The act has to close it.
  explicit InPanel(std::function<void(NSView* contents)> act);
  // Presses the button of that title.
  explicit InPanel(const std::string& button);
  ~InPanel();
  InPanel(const InPanel&) = delete;
  InPanel& operator=(const InPanel&) = delete;

  // How many panels there were.
  int seen = 0;
  // The texts of the panel, one after another, each followed by a line feed.
  std::string words;

 private:
  void look();
  std::function<void(NSView* contents)> act_;
  Handle timer_;
};

// Presses the button of that title; the test fails where there is none.
void pressIn(NSView* contents, const std::string& title);

}  // namespace norvik::prefpane
