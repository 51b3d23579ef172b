// What the run loop calls this front end for, besides the pane's own timer: once after a time, and when a
// descriptor can be read. Only in the run loop's default mode, so never while a panel is open or the pane
// waits. A plain C++ header. Main thread only.
#pragma once

#include <functional>

#include "src/frontends/prefpane/handles.h"

namespace norvik::prefpane {

class Delay {
 public:
  explicit Delay(std::function<void()> call) : call_(std::move(call)) {}
  ~Delay() { stop(); }
  Delay(const Delay&) = delete;
  Delay& operator=(const Delay&) = delete;

  // Calls once after that many seconds; a call that was waited for does not come any more.
  void start(double seconds);
  void stop();

 private:
  std::function<void()> call_;
  Handle timer_;
};

class DescriptorWatch {
 public:
  // Calls while the descriptor can be read. It stays the caller's; -1 is never readable.
  DescriptorWatch(int descriptor, std::function<void()> readable);
  ~DescriptorWatch();
  DescriptorWatch(const DescriptorWatch&) = delete;
  DescriptorWatch& operator=(const DescriptorWatch&) = delete;

 private:
  Handle file_;
  Handle observer_;
};

}  // namespace norvik::prefpane
