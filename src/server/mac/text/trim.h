// Texts without what surrounds them. Every result points into the text given.
#pragma once

#include <string_view>

namespace norvik {

// The white space of a file that programs write: XML's four characters.
inline constexpr std::string_view kBlanks = " \t\r\n";
// The white space of C's number conversions.
inline constexpr std::string_view kCSpace = " \t\n\v\f\r";

// Without any of `characters`, which are single bytes, at its beginning, its end, or both.
std::string_view withoutLeading(std::string_view text, std::string_view characters);
std::string_view withoutTrailing(std::string_view text, std::string_view characters);
std::string_view trimmed(std::string_view text, std::string_view characters);

// A UTF-8 text without the white space and line ends of Unicode at both ends.
std::string_view trimmed(std::string_view text);

}  // namespace norvik
