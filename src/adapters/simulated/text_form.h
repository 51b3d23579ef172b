// Texts and numbers as a test reads them: always on one line, always the same for the same value.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

// The text escaped and in quotation marks; `null` without them for a null pointer.
std::string quotedOrNull(const char* text);

// The shortest decimal form that reads back as the same number, 5 for 5.0; with an exponent only below 0.0001
// and from 10 to the 16th on.
std::string shortestForm(double number);

}  // namespace norvik
