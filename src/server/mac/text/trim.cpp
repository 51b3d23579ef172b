// Trimming by bytes and by characters.
#include "src/server/mac/text/trim.h"

#include <algorithm>
#include <cstddef>

#include "src/server/mac/text/utf8.h"

namespace norvik {

std::string_view withoutLeading(std::string_view text, std::string_view characters) {
  return text.substr(std::min(text.find_first_not_of(characters), text.size()));
}

std::string_view withoutTrailing(std::string_view text, std::string_view characters) {
  return text.substr(0, text.find_last_not_of(characters) + 1);
}

std::string_view trimmed(std::string_view text, std::string_view characters) {
  return withoutLeading(withoutTrailing(text, characters), characters);
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

}  // namespace norvik
