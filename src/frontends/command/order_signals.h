// What becomes of an order to the server when whoever gave it goes away. A restart that ended half way would
// leave the server stopped, on a computer that perhaps nobody reaches without it.
#pragma once

#include "src/server/mac/platform/application.h"

namespace norvik::command {

// While it lives, the end of the terminal, of the connection or of the reader does not end the program, and
// an interruption (SIGINT, SIGTERM) is only noted. At most one at a time; for the whole program.
class OrderSignals {
 public:
  OrderSignals();
  // Restores what was before.
  ~OrderSignals();
  OrderSignals(const OrderSignals&) = delete;
  OrderSignals& operator=(const OrderSignals&) = delete;

  static bool interrupted();
};

// What an order throws where an interruption was noted. The pane is not to be used any more afterwards.
struct Interruption {};

// Draws as the given drawing does, and ends the order where an interruption was noted: the pane, which counts
// the seconds in its state label, draws it each time.
class InterruptibleDrawing : public Drawing {
 public:
  // Borrows the drawing.
  explicit InterruptibleDrawing(Drawing& drawing) : drawing_(drawing) {}

  void display(Control& control) override;
  void displayIfNeeded(View& view) override { drawing_.displayIfNeeded(view); }

 private:
  Drawing& drawing_;
};

}  // namespace norvik::command
