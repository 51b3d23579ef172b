// Retain and release, all that holding an object needs.
#include "src/frontends/prefpane/handles.h"

#include <utility>

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

Handle::Handle(void* object) : object_([static_cast<id>(object) retain]) {}

Handle::Handle(const Handle& other) : Handle(other.object_) {}

Handle& Handle::operator=(Handle other) noexcept {
  std::swap(object_, other.object_);
  return *this;
}

Handle::~Handle() {
  [static_cast<id>(object_) release];
}

}  // namespace norvik::prefpane
