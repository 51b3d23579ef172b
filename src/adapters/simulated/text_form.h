// Texts and numbers in a line that a test reads: always on one line, always the same for the same value.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

// The text with control characters, quotation marks, backslashes and invalid UTF-8 escaped, so that any bytes
// fit on one line: \n \r \t \" \\ and \xHH in lower case.
std::string escaped(std::string_view text);

// The same in quotation marks.
std::string quoted(std::string_view text);

// `null` without quotation marks for a null pointer.
std::string quotedOrNull(const char* text);

// The shortest decimal form that reads back as the same number, 5 for 5.0; with an exponent only below 0.0001
// and from 10 to the 16th on.
std::string shortestForm(double number);

}  // namespace norvik
