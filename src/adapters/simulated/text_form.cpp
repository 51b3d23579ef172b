// Escaping of bytes, and decimal forms.
#include "src/adapters/simulated/text_form.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace norvik {

namespace {

struct Escape {
  char character;
  std::string_view form;
};

constexpr Escape kEscapes[] = {{'\n', "\\n"}, {'\r', "\\r"}, {'\t', "\\t"}, {'"', "\\\""}, {'\\', "\\\\"}};

// What a lead byte says of its sequence: how long it is, and what the second byte may be, which is narrower
// than 80 to BF where the sequence would otherwise be overlong, a surrogate or beyond the last character.
struct Lead {
  unsigned char first, last;
  std::size_t length;
  unsigned char second_first, second_last;
};

constexpr Lead kLeads[] = {
    {0x20, 0x7e, 1, 0, 0},
    // The second byte from A0 on: U+0080 to U+009F are control characters.
    {0xc2, 0xc2, 2, 0xa0, 0xbf},
    {0xc3, 0xdf, 2, 0x80, 0xbf},
    {0xe0, 0xe0, 3, 0xa0, 0xbf},
    {0xe1, 0xec, 3, 0x80, 0xbf},
    {0xed, 0xed, 3, 0x80, 0x9f},
    {0xee, 0xef, 3, 0x80, 0xbf},
    {0xf0, 0xf0, 4, 0x90, 0xbf},
    {0xf1, 0xf3, 4, 0x80, 0xbf},
    {0xf4, 0xf4, 4, 0x80, 0x8f},
};

bool isWithin(char byte, unsigned char first, unsigned char last) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= first && value <= last;
}

// The length of the printable character that the text begins with; 0 where it begins with none.
std::size_t printableLength(std::string_view text) {
  for (const Lead& lead : kLeads) {
    if (!isWithin(text[0], lead.first, lead.last)) continue;
    if (text.size() < lead.length) return 0;
    if (lead.length > 1 && !isWithin(text[1], lead.second_first, lead.second_last)) return 0;
    for (std::size_t i = 2; i < lead.length; ++i) {
      if (!isWithin(text[i], 0x80, 0xbf)) return 0;
    }
    return lead.length;
  }
  return 0;
}

void appendByte(std::string& form, char byte) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto value = static_cast<unsigned char>(byte);
  form += "\\x";
  form += kDigits[value >> 4];
  form += kDigits[value & 15];
}

bool appendEscape(std::string& form, char character) {
  for (const Escape& escape : kEscapes) {
    if (escape.character != character) continue;
    form += escape.form;
    return true;
  }
  return false;
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string form;
  while (!text.empty()) {
    std::size_t length = printableLength(text);
    if (appendEscape(form, text[0])) {
      length = 1;
    } else if (length == 0) {
      appendByte(form, text[0]);
      length = 1;
    } else {
      form += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return form;
}

std::string quoted(std::string_view text) {
  return '"' + escaped(text) + '"';
}

std::string quotedOrNull(const char* text) {
  return text == nullptr ? "null" : quoted(text);
}

std::string shortestForm(double number) {
  const double size = std::fabs(number);
  const bool plain = size == 0 || (size >= 1e-4 && size < 1e16);
  std::array<char, 64> form{};
  const auto end = std::to_chars(form.data(), form.data() + form.size(), number,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific)
                       .ptr;
  return {form.data(), end};
}

}  // namespace norvik
