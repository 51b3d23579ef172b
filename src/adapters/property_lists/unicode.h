// The Unicode encodings of property-list files, and the one that is used in memory (UTF-8). Knows nothing of
// the formats.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvik {

// The replacement character, for what is not a character.
inline constexpr char32_t kReplacement = 0xFFFD;

// Whether a number is a character: at most 0x10FFFF and no half of a surrogate pair.
bool isScalar(char32_t c);

// Appends a character; isScalar must hold for it.
void appendUtf8(std::string& text, char32_t c);

// Takes the first character off a text that is not empty. Nothing when the text does not begin with
// well-formed UTF-8; the text then loses one byte.
std::optional<char32_t> takeUtf8(std::string_view& text);

bool isWellFormedUtf8(std::string_view text);

// UTF-16 code units, in two bytes each, to UTF-8. Nothing for a half unit or a half surrogate pair.
std::optional<std::string> fromUtf16(std::string_view bytes, bool bigEndian);

// UTF-8 to UTF-16 code units; what is no UTF-8 becomes kReplacement.
std::vector<char16_t> toUtf16(std::string_view text);

// ISO 8859-1 to UTF-8.
std::string fromLatin1(std::string_view bytes);

}  // namespace norvik
