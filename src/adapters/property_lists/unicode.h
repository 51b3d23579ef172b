// The Unicode encodings of property-list files, and the one that is used in memory (UTF-8). Knows nothing of
// the formats.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvik {

// UTF-16 code units, in two bytes each, to UTF-8, which is appended to `text`. False for a half unit or a
// half surrogate pair; `text` then ends before it.
bool fromUtf16(std::string_view bytes, bool bigEndian, std::string& text);

// UTF-8 to UTF-16 code units; what is no UTF-8 becomes kReplacementCharacter.
std::vector<char16_t> toUtf16(std::string_view text);

// ISO 8859-1 to UTF-8.
std::string fromLatin1(std::string_view bytes);

}  // namespace norvik
