// Decoding of UTF-8 and the few character sets that lines are split at.
#include "src/server/mac/text/utf8.h"

#include <algorithm>
#include <iterator>

namespace norvik {

namespace {

// The forms of a sequence by its first byte, and the least code that each may stand for: a longer form than
// needed is no valid one.
struct Form {
  unsigned char mask;
  unsigned char lead;
  std::size_t length;
  char32_t least;
};
constexpr Form kForms[] = {
    {0x80, 0x00, 1, 0}, {0xe0, 0xc0, 2, 0x80}, {0xf0, 0xe0, 3, 0x800}, {0xf8, 0xf0, 4, 0x10000}};

constexpr char32_t kWhiteSpace[] = {0x09,   0x20,   0xa0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                    0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200a, 0x202f, 0x205f, 0x3000};
constexpr char32_t kLineEnds[] = {0x0a, 0x0b, 0x0c, 0x0d, 0x85, 0x2028, 0x2029};

template <std::size_t N>
bool contains(const char32_t (&set)[N], char32_t code) {
  return std::find(std::begin(set), std::end(set), code) != std::end(set);
}

bool isScalar(char32_t code) {
  return code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
}

std::optional<Character> decode(std::string_view text, const Form& form) {
  if (text.size() < form.length) return std::nullopt;
  char32_t code = static_cast<unsigned char>(text[0]) & static_cast<unsigned char>(~form.mask);
  for (std::size_t i = 1; i < form.length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xc0) != 0x80) return std::nullopt;
    code = code << 6 | (byte & 0x3fu);
  }
  if (code < form.least || !isScalar(code)) return std::nullopt;
  return Character{code, form.length};
}

}  // namespace

std::optional<Character> firstCharacter(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const auto lead = static_cast<unsigned char>(text[0]);
  for (const Form& form : kForms) {
    if ((lead & form.mask) == form.lead) return decode(text, form);
  }
  return std::nullopt;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const auto character = firstCharacter(text);
    if (!character) return false;
    text.remove_prefix(character->length);
  }
  return true;
}

bool isWhiteSpace(char32_t code) {
  return contains(kWhiteSpace, code);
}
bool isLineEnd(char32_t code) {
  return contains(kLineEnds, code);
}

std::string_view trimmed(std::string_view text) {
  std::size_t begin = text.size();
  std::size_t end = 0;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = firstCharacter(text.substr(at)).value_or(Character{0, 1});
    if (!isWhiteSpace(character.code) && !isLineEnd(character.code)) {
      begin = std::min(begin, at);
      end = at + character.length;
    }
    at += character.length;
  }
  return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

std::size_t utf16Length(std::string_view text) {
  std::size_t units = 0;
  while (!text.empty()) {
    const Character character = firstCharacter(text).value_or(Character{0, 1});
    units += character.code > 0xffff ? 2 : 1;
    text.remove_prefix(character.length);
  }
  return units;
}

}  // namespace norvik
