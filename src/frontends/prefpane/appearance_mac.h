// Light and dark on the Mac: the pane is notified when the appearance of its view changes. A plain C++
// header. Main thread only.
#pragma once

#include <functional>

#include "src/frontends/prefpane/handles.h"

namespace norvik::prefpane {

class AppearanceWatch {
 public:
  // Calls `changed` whenever the appearance of the NSView changes, with that appearance as the current one.
  AppearanceWatch(void* view, std::function<void()> changed);
  ~AppearanceWatch();
  AppearanceWatch(const AppearanceWatch&) = delete;
  AppearanceWatch& operator=(const AppearanceWatch&) = delete;

 private:
  Handle follower_;
};

}  // namespace norvik::prefpane
