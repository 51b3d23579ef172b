// Where an order to the server, which takes the pane up to a minute, notices that it was interrupted.
#pragma once

#include <functional>
#include <utility>

#include "src/server/mac/platform/application.h"

namespace norvik::command {

// What an order throws where it was interrupted. The pane is not to be used any more afterwards.
struct Interruption {};

// Draws as the given drawing does, and ends the order where it was interrupted: the pane, which counts the
// seconds in its state label, draws it each time.
class InterruptibleDrawing : public Drawing {
 public:
  // Borrows the drawing.
  InterruptibleDrawing(Drawing& drawing, std::function<bool()> wasInterrupted)
      : drawing_(drawing), wasInterrupted_(std::move(wasInterrupted)) {}

  void display(Control& control) override {
    drawing_.display(control);
    if (wasInterrupted_()) throw Interruption();
  }
  void displayIfNeeded(View& view) override { drawing_.displayIfNeeded(view); }

 private:
  Drawing& drawing_;
  std::function<bool()> wasInterrupted_;
};

}  // namespace norvik::command
