// Checks a value before it reaches a control: is it of the setting's kind, and in its range? The pane itself
// takes whatever a control holds, so every front end that lets a person type checks here first.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "src/frontends/shared/interface/setting_description.h"

namespace norvik {

// The number of a text that is a whole number and nothing else, with a minus sign or without; the nearest
// 64-bit number where none holds it. Nothing for any other text.
std::optional<int64_t> wholeNumber(std::string_view text);

// A word as it is compared: without capitals, and with spaces for hyphens.
std::string folded(std::string_view text);

// The value of a text, as a control holds it: 1 or 0 for a box, the index from 0 of an item or of a choice,
// the number itself for a slider or a text field. Nothing where the text is of another kind or out of range.
//
// A box takes on, off, yes, no, true, false, 1 and 0; an item its text or its number from 1; a choice its
// word. Case does not matter, a hyphen in an item's text means a space, and white space around a number does
// not count.
std::optional<int64_t> checkedValue(const SettingDescription& setting, std::string_view text);

// What the setting takes, in words to be read after "takes": "a whole number from 4 to 8", "on or off",
// "Low, Medium or High".
std::string acceptedValues(const SettingDescription& setting);

// The range of a number in words: "a whole number from 1 to 65535".
std::string rangeInWords(const ControlDescription& control);

// "Low, Medium or High".
std::string listInWords(const std::vector<std::string>& words, std::string_view conjunction);

}  // namespace norvik
