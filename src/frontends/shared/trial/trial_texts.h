// The words around a change on trial that the windows show. Knows no toolkit.
#pragma once

#include <string_view>

#include "src/frontends/shared/language/language.h"

namespace norvik::trial_texts {

inline constexpr std::string_view kApplyOnTrial = english("Apply on Trial");
inline constexpr std::string_view kApplyOnTrialHelp =
    english("Puts the changes into force for 60 seconds. Unless you keep them, they are taken back.");
inline constexpr std::string_view kApplyEntry = english("Apply on trial");
inline constexpr std::string_view kStopEntry = english("Stop the server on trial");

// ---- While it is in force

// {1} is the number of seconds.
inline constexpr CountedText kBegun =
    englishCounted("On trial: taken back in {1} second unless you keep it.",
                   "On trial: taken back in {1} seconds unless you keep it.");
inline constexpr std::string_view kCountdown = english("On trial: taken back in {1} s unless you keep it.");

// ---- Its end

inline constexpr std::string_view kKept = english("The change on trial is kept.");
inline constexpr std::string_view kReverted = english("The change on trial is taken back.");
inline constexpr std::string_view kLapsed =
    english("The change on trial is taken back, as the time has passed.");

// ---- Closing the window meanwhile

inline constexpr std::string_view kLeaveTitle = english("Keep the Change on Trial?");
inline constexpr std::string_view kLeaveText =
    english("It is taken back in {1} s. Keep it, or take it back now?");
inline constexpr std::string_view kKeep = english("Keep");
inline constexpr std::string_view kRevert = english("Revert");

}  // namespace norvik::trial_texts
