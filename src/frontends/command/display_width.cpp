// The C library knows the width of every character; its own locale for that is there where no other is.
#include "src/frontends/command/display_width.h"

#include <clocale>
#include <cwchar>

#include "src/server/mac/text/utf8.h"

namespace norvik::command {

namespace {

locale_t utf8Locale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
  const locale_t before = utf8Locale() != nullptr ? uselocale(utf8Locale()) : nullptr;
  std::size_t width = 0;
  while (!text.empty()) {
    const auto character = firstCharacter(text);
    const int cells = character ? wcwidth(static_cast<wchar_t>(character->code)) : 1;
    width += cells < 0 ? 1 : static_cast<std::size_t>(cells);
    text.remove_prefix(character ? character->length : 1);
  }
  if (before != nullptr) uselocale(before);
  return width;
}

}  // namespace norvik::command
