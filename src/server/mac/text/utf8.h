// UTF-8: reading and writing characters, and the classes of characters that matter here.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace norvik {

// The first character of a UTF-8 text and how many bytes it has.
struct Character {
  char32_t code = 0;
  std::size_t length = 0;
};

// Shown in place of bytes that are no UTF-8.
inline constexpr char32_t kReplacementCharacter = 0xfffd;

// Whether a number is a character: at most 0x10ffff and no half of a surrogate pair.
bool isScalar(char32_t code);

// Nothing for an empty text and for one that does not begin with a valid sequence.
std::optional<Character> firstCharacter(std::string_view text);

// Takes the first character off a text that is not empty. Nothing where the text does not begin with a valid
// sequence; the text then loses one byte.
std::optional<char32_t> takeCharacter(std::string_view& text);

// Appends a character; isScalar must hold for it.
void appendCharacter(std::string& text, char32_t code);

bool isUtf8(std::string_view text);

// How many characters, and how many UTF-16 units, the text has; a byte that is no UTF-8 counts as one.
std::size_t characterCount(std::string_view text);
std::size_t utf16Length(std::string_view text);

// Tab and the space separators.
bool isWhiteSpace(char32_t code);
// Line feed, vertical tab, form feed, carriage return, next line, line and paragraph separator.
bool isLineEnd(char32_t code);
// U+0000 to U+001F and U+007F to U+009F.
bool isControlCharacter(char32_t code);

}  // namespace norvik
