// Escaping, byte by byte where a character is not printable.
#include "src/server/mac/text/escape.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

struct Escape {
  char character;
  std::string_view form;
};
constexpr Escape kEscapes[] = {{'\n', "\\n"}, {'\r', "\\r"}, {'\t', "\\t"}, {'"', "\\\""}, {'\\', "\\\\"}};

void appendByte(std::string& form, char byte) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto value = static_cast<unsigned char>(byte);
  form += "\\x";
  form += kDigits[value >> 4];
  form += kDigits[value & 15];
}

// Appends what the text begins with; how many bytes of the text that was.
std::size_t appendFirst(std::string& form, std::string_view text) {
  const auto escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                   [&](const Escape& e) { return e.character == text.front(); });
  if (escape != std::end(kEscapes)) {
    form += escape->form;
    return 1;
  }
  const auto character = firstCharacter(text);
  if (!character || isControlCharacter(character->code)) {
    appendByte(form, text.front());
    return 1;
  }
  form += text.substr(0, character->length);
  return character->length;
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string form;
  while (!text.empty()) text.remove_prefix(appendFirst(form, text));
  return form;
}

std::string quoted(std::string_view text) {
  return '"' + escaped(text) + '"';
}

}  // namespace norvik
