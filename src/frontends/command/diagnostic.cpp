// Escapes what a terminal must not get, character by character.
#include "src/frontends/command/diagnostic.h"

#include <ostream>

#include "src/server/mac/text/escape.h"
#include "src/server/mac/text/utf8.h"

namespace norvik::command {

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const auto character = firstCharacter(text);
    const std::string_view bytes = text.substr(0, character ? character->length : 1);
    if (character && !isControlCharacter(character->code)) {
      result += bytes;
    } else {
      result += escaped(bytes);
    }
    text.remove_prefix(bytes.size());
  }
  return result;
}

void writeDiagnostic(std::ostream& err, std::string_view sentence) {
  err << "norvikctl: " << printable(sentence) << '\n';
}

}  // namespace norvik::command
