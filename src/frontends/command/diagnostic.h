// Messages on standard error. They may repeat what was typed, which must not reach a terminal as it is.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace norvik::command {

// The text with each control character, and each byte that is no text, as an escape: "\x1b".
std::string printable(std::string_view text);

// One line: the program's name, and the printable sentence.
void writeDiagnostic(std::ostream& err, std::string_view sentence);

}  // namespace norvik::command
