// The lock button as the toolkit has it: NVKButton with its cell, NVKButtonCell. A plain C++ header.
#pragma once

#include "src/server/mac/ui/control.h"

namespace norvik::prefpane {

// A new NVKButton, autoreleased, in the size of a lock.
void* makeLockButton();

// Gives the button the tint and the picture of the model, which is an NVKButton of the module.
void showLockButton(void* button, const Control& model);

}  // namespace norvik::prefpane
