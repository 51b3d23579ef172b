// The pane's lines in the system log, all of them about failures.
#pragma once

#include <string_view>

namespace norvik {

inline constexpr const char* kCouldNotWriteFile = "Norvik[E]: Could not write file: %s";

// Logs a line at error priority, warnings too. `format` holds at most one %s, which becomes `text`. Needs an
// installed computer.
void logFailure(const char* format, std::string_view text = {});

}  // namespace norvik
