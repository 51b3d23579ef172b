// The start of a window: a trial that a program has left in force which did not survive it is taken back, and
// a person reads what came of it. Knows no toolkit.
#pragma once

#include <functional>

#include "src/frontends/shared/interface/window_messages.h"
#include "src/frontends/shared/trial/trial_return.h"

namespace norvik {

// Takes it back by `takeBack`, with the lock open where that is needed. Lets go of it afterwards, or leaves
// it to the next start where it is still in force; the message then offers to take it back and to keep it.
// Empty where there is none, a warning where its file cannot be read. Main thread; blocks as `takeBack` does.
WindowMessage takeBackLeft(Trials& trials, UserState& state,
                           const std::function<TrialReturn(const Trial& left)>& takeBack);

}  // namespace norvik
