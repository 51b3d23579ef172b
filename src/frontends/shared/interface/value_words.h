// What is shown beside a slider: its number and, where the number says little, what it means. Reads only the
// description.
#pragma once

#include <cstdint>
#include <string>

#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// Beside the slider: "6 of 8", or the number alone for a slider without words.
std::string valueText(const ControlDescription& slider, int64_t value);

// What the value means, "thousands of colours"; empty for a slider without words, and for a value outside its
// range.
std::string valueWords(const ControlDescription& slider, int64_t value);

// Both, as a screen reader says it: "6 of 8, thousands of colours".
std::string spokenValue(const ControlDescription& slider, int64_t value);

}  // namespace norvik
