// As much of Unicode as the line files need: valid UTF-8, white space, line ends, lengths in UTF-16.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace norvik {

// The first character of a UTF-8 text and how many bytes it has.
struct Character {
  char32_t code = 0;
  std::size_t length = 0;
};

// Nothing for an empty text and for one that does not begin with a valid sequence.
std::optional<Character> firstCharacter(std::string_view text);

bool isUtf8(std::string_view text);

// Tab and the space separators.
bool isWhiteSpace(char32_t code);
// Line feed, vertical tab, form feed, carriage return, next line, line and paragraph separator.
bool isLineEnd(char32_t code);

// The text without white space and line ends at both of its ends.
std::string_view trimmed(std::string_view text);

// How many UTF-16 units the text has; a byte that is no valid UTF-8 counts as one.
std::size_t utf16Length(std::string_view text);

}  // namespace norvik
