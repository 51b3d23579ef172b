// The words of a command line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvik::scenario {

struct Word {
  std::string text;     // without quotation marks, escapes resolved
  bool quoted = false;  // "none" in quotes is a text, none without them is a word
};

// Words are separated by spaces. Throws Malformed for a text that does not end or has an unknown escape.
std::vector<Word> splitWords(std::string_view line);

// Removes a text in double quotes from the line, which begins with one; what follows stays.
std::string takeQuoted(std::string_view& line);

// The key with its escapes resolved: those of texts, and \/ for a slash.
std::string unescapedKey(std::string_view key);

}  // namespace norvik::scenario
