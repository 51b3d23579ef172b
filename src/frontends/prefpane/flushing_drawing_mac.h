// Drawing at once on the Mac. A plain C++ header. Main thread only.
#pragma once

#include "src/server/mac/platform/application.h"

namespace norvik::prefpane {

// What is drawn by force lies in layers, which go to the screen when the run loop waits for events; while the
// pane counts the dots of a start it does not. So each drawing is followed by sending the layers off.
class FlushingDrawing : public Drawing {
 public:
  explicit FlushingDrawing(Drawing& drawing) : drawing_(drawing) {}
  void display(Control& control) override;
  void displayIfNeeded(View& view) override;

 private:
  Drawing& drawing_;
};

}  // namespace norvik::prefpane
