// Settings that have no effect on a computer because nothing there reads their files: how that is said, and
// beside which controls, for every front end. Computes values; touches nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik {

inline constexpr std::string_view kUnreadSentence =
    english("Nothing on this computer reads this setting, so it has no effect here.");

// Whether the control of that outlet belongs to such a setting. The files are those of ComputerServices.
bool isUnread(std::string_view outlet, const std::vector<std::string>& unreadFiles);

// The description with the sentence in the help text of each such control, and in the note over the section
// that it is in, there after the control's label where other settings of the section do have an effect.
InterfaceDescription withUnreadSaid(InterfaceDescription interface,
                                    const std::vector<std::string>& unreadFiles);

}  // namespace norvik
