// Drawing for a front end without a screen: the server's state label, as it grows dot by dot.
#pragma once

#include <ostream>
#include <string>

#include "src/server/mac/platform/application.h"

namespace norvik::command {

class Progress : public Drawing {
 public:
  // Writes to `out`, which is borrowed; nothing is written where it is null.
  explicit Progress(std::ostream* out) : out_(out) {}
  // Ends a line that was begun.
  ~Progress() override { finishLine(); }

  void display(Control& control) override;
  void displayIfNeeded(View& /*view*/) override {}

  // Ends the line of the last text, if there is one.
  void finishLine();

 private:
  std::ostream* out_;
  std::string shown_;
};

}  // namespace norvik::command
