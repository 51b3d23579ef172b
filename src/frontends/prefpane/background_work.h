// Work that may take seconds, on a thread of its own, so that the host goes on meanwhile. A plain C++ header.
// Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "src/frontends/prefpane/handles.h"

namespace norvik::prefpane {

class BackgroundWork {
 public:
  BackgroundWork() = default;
  // Waits for the work that is under way; nothing is called afterwards.
  ~BackgroundWork();
  BackgroundWork(const BackgroundWork&) = delete;
  BackgroundWork& operator=(const BackgroundWork&) = delete;

  // Calls `work`, which must not throw, on another thread, and afterwards `then` on the main thread: in the
  // run loop's default mode and while a panel is open, never while the pane waits. `then` is also called
  // where the system has no thread left for the work. The main thread looks for the end of the work, as the
  // toolkit need not know of the thread then.
  void run(std::function<void()> work, std::function<void()> then);

 private:
  struct Task;
  void look();

  std::vector<std::shared_ptr<Task>> tasks_;  // whose `then` is still to be called
  Handle timer_;                              // while there are tasks
  Handle inPanels_;                           // from the first task on; fires only while a panel is open
};

}  // namespace norvik::prefpane
