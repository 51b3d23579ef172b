// The details of a message: what was run and what it said, to read and to copy.
#pragma once

#include <QWidget>

#include "src/frontends/shared/interface/window_messages.h"

namespace norvik::desktop {

// Returns when a person has closed it.
void showDetails(QWidget* window, const WindowMessage& message);

}  // namespace norvik::desktop
