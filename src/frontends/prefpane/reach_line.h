// The line under the lock's hint: the server's state and the address to connect to, seen while the lock is
// closed too, and the button that shows the whole ladder. A plain C++ header.
#pragma once

#include <functional>
#include <string>

#include "src/frontends/prefpane/handles.h"
#include "src/server/mac/platform/geometry.h"

namespace norvik::prefpane {

class ReachLine {
 public:
  // So many points wide at first; follows the width that its view gets.
  explicit ReachLine(double width);
  ~ReachLine();
  ReachLine(const ReachLine&) = delete;
  ReachLine& operator=(const ReachLine&) = delete;

  // NSViews: the whole, and the button in it.
  void* view() const { return view_.get(); }
  void* button() const { return button_.get(); }

  // Shortened where there is no room; the tip always has the whole text.
  void showLine(const std::string& line);
  void showColor(const Color& color);
  const std::string& line() const { return line_; }

  // Called when a person asks for the ladder.
  std::function<void()> pressed;

 private:
  void place();

  std::string line_;
  Handle view_;
  Handle dot_;
  Handle words_;
  Handle button_;
  Handle target_;
  Handle resized_;  // notified when the width is another one
};

}  // namespace norvik::prefpane
