// The one table of UTF-8's forms, and the classes of characters.
#include "src/server/mac/text/utf8.h"

#include <algorithm>
#include <iterator>

namespace norvik {

namespace {

constexpr char32_t kFirstSupplementary = 0x10000;

// The forms of a sequence by its first byte, and the least code of each: a longer form than needed is not
// valid.
struct Form {
  unsigned char mask;
  unsigned char lead;
  std::size_t length;
  char32_t least;
};
constexpr Form kForms[] = {
    {0x80, 0x00, 1, 0}, {0xe0, 0xc0, 2, 0x80}, {0xf0, 0xe0, 3, 0x800}, {0xf8, 0xf0, 4, kFirstSupplementary}};

constexpr char32_t kWhiteSpace[] = {0x09,   0x20,   0xa0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                    0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200a, 0x202f, 0x205f, 0x3000};
constexpr char32_t kLineEnds[] = {0x0a, 0x0b, 0x0c, 0x0d, 0x85, 0x2028, 0x2029};

template <std::size_t N>
bool contains(const char32_t (&set)[N], char32_t code) {
  return std::find(std::begin(set), std::end(set), code) != std::end(set);
}

unsigned char byteOf(char c) {
  return static_cast<unsigned char>(c);
}

std::optional<Character> decode(std::string_view text, const Form& form) {
  if (text.size() < form.length) return std::nullopt;
  char32_t code = byteOf(text[0]) & static_cast<unsigned char>(~form.mask);
  for (std::size_t i = 1; i < form.length; ++i) {
    if ((byteOf(text[i]) & 0xc0) != 0x80) return std::nullopt;
    code = code << 6 | (byteOf(text[i]) & 0x3fu);
  }
  if (code < form.least || !isScalar(code)) return std::nullopt;
  return Character{code, form.length};
}

}  // namespace

bool isScalar(char32_t code) {
  return code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
}

std::optional<Character> firstCharacter(std::string_view text) {
  if (text.empty()) return std::nullopt;
  for (const Form& form : kForms) {
    if ((byteOf(text[0]) & form.mask) == form.lead) return decode(text, form);
  }
  return std::nullopt;
}

std::optional<char32_t> takeCharacter(std::string_view& text) {
  const auto character = firstCharacter(text);
  text.remove_prefix(character ? character->length : 1);
  if (!character) return std::nullopt;
  return character->code;
}

void appendCharacter(std::string& text, char32_t code) {
  const Form* form = std::begin(kForms);
  for (const Form& longer : kForms) {
    if (code >= longer.least) form = &longer;
  }
  auto shift = 6 * (form->length - 1);
  text += static_cast<char>(static_cast<unsigned char>(form->lead | code >> shift));
  while (shift > 0) {
    shift -= 6;
    text += static_cast<char>(static_cast<unsigned char>(0x80u | (code >> shift & 0x3fu)));
  }
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    // Most text is ASCII, and a file may be large.
    const auto beyond = std::find_if(text.begin(), text.end(), [](char c) { return byteOf(c) >= 0x80; });
    text.remove_prefix(static_cast<std::size_t>(beyond - text.begin()));
    if (!text.empty() && !takeCharacter(text)) return false;
  }
  return true;
}

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) takeCharacter(text);
  return count;
}

std::size_t utf16Length(std::string_view text) {
  std::size_t units = 0;
  while (!text.empty()) units += takeCharacter(text).value_or(0) >= kFirstSupplementary ? 2 : 1;
  return units;
}

bool isWhiteSpace(char32_t code) {
  return contains(kWhiteSpace, code);
}
bool isLineEnd(char32_t code) {
  return contains(kLineEnds, code);
}
bool isControlCharacter(char32_t code) {
  return code < 0x20 || (code >= 0x7f && code <= 0x9f);
}

}  // namespace norvik
