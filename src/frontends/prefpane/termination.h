// The end of the application that hosts the pane: hearing of it, and having the system not end the
// application unheard. A plain C++ header. Main thread only.
#pragma once

#include <functional>

#include "src/frontends/prefpane/handles.h"

namespace norvik::prefpane {

class TerminationWatch {
 public:
  // Calls when the application is about to end by itself; it waits until the call returns, panels included.
  explicit TerminationWatch(const std::function<void()>& ends);
  ~TerminationWatch();
  TerminationWatch(const TerminationWatch&) = delete;
  TerminationWatch& operator=(const TerminationWatch&) = delete;

 private:
  Handle observer_;
};

// As long as one of these lives, the system does not kill the application in place of asking it to end.
class NoSuddenTermination {
 public:
  NoSuddenTermination();
  ~NoSuddenTermination();
  NoSuddenTermination(const NoSuddenTermination&) = delete;
  NoSuddenTermination& operator=(const NoSuddenTermination&) = delete;
};

}  // namespace norvik::prefpane
