// The words about reachability that the windows show, so that two windows say the same. Knows no toolkit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/interface/window_texts.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/reach/ladder.h"

namespace norvik {

namespace reach_texts {

inline constexpr std::string_view kTitle = english("Can they reach me?");
inline constexpr std::string_view kHelp =
    english("Tells step by step whether clients can connect to this computer and, if not, why.");
inline constexpr std::string_view kSteps = english("Show each step…");
inline constexpr std::string_view kLookAgain = english("Look Again");
inline constexpr std::string_view kLooking = english("Looking…");
inline constexpr std::string_view kAddresses = english("Addresses of this computer that others can use");
inline constexpr std::string_view kCopy = english("Copy");
inline constexpr std::string_view kScan = english("Scan to take the address along");

}  // namespace reach_texts

// State and addresses in one line, short enough for a small window: "Started · Norvik mac.example.com:4500 ·
// RDP mac.example.com". `state` is the pane's word; without services it is all.
std::string reachLine(const std::string& state, const std::vector<ServiceReach>& services);

// "Yes", "No", "Not known", "Not looked at": before each answer, for a person who does not see its icon.
std::string wordOf(Verdict verdict);
// The icon of an answer.
MessageKind kindOf(Verdict verdict);
// What was seen, or the question where nobody looked.
std::string answerOf(const RungResult& rung);

}  // namespace norvik
