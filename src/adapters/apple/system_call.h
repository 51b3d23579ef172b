// Functions of the platform that it may not have any more. They are looked up when they are needed, so that
// the pane still loads on a system that has taken one away.
#pragma once

#include <dlfcn.h>

namespace norvik {

// The function of that name in what the program has loaded; null if there is none. `Function` is its type.
template <typename Function>
Function* systemCall(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_DEFAULT, name));
}

}  // namespace norvik
