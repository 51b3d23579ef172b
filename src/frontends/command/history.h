// A recorded change taken back, as a request for a change.
#pragma once

#include <vector>

#include "src/frontends/command/change.h"
#include "src/frontends/shared/history/reversal.h"

namespace norvik::command {

// What to make of it that all there is to take back was changed again, and is left alone.
enum class NothingLeft { fails, isFine };

// The change that takes the settings back. It opens the lock only where one of the administrator is among
// them.
ChangeRequest requestToReturn(const Context& context, const std::vector<RecordedSetting>& settings,
                              ChangedAgain again, NothingLeft nothingLeft);

}  // namespace norvik::command
