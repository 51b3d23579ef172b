// Any bytes as printable text on one line.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

// The text with its control characters, quotation marks, backslashes and whatever is no UTF-8 escaped:
// \n \r \t \" \\ and \xHH in lower case.
std::string escaped(std::string_view text);

// The same in quotation marks.
std::string quoted(std::string_view text);

}  // namespace norvik
