// Splitting and unescaping.
#include "src/frontends/scenario/words.h"

#include <charconv>
#include <cstddef>

#include "src/frontends/scenario/malformed.h"

namespace norvik::scenario {

namespace {

constexpr std::string_view kEscapeLetters = "nrt\"\\";
constexpr std::string_view kEscapeMeanings = "\n\r\t\"\\";

// Removes what follows a backslash from the text.
char takeEscape(std::string_view& text) {
  if (text.empty()) throw Malformed("a text ends in a backslash");
  const char letter = text.front();
  const std::size_t place = kEscapeLetters.find(letter);
  if (place != std::string_view::npos) {
    text.remove_prefix(1);
    return kEscapeMeanings[place];
  }
  unsigned byte = 0;
  const bool hasDigits = letter == 'x' && text.size() >= 3;
  if (!hasDigits || std::from_chars(&text[1], &text[1] + 2, byte, 16).ptr != &text[1] + 2) {
    throw Malformed("unknown escape \"\\" + std::string(text.substr(0, letter == 'x' ? 3 : 1)) + '"');
  }
  text.remove_prefix(3);
  return static_cast<char>(byte);
}

}  // namespace

std::string takeQuoted(std::string_view& line) {
  std::string text;
  line.remove_prefix(1);
  for (;;) {
    if (line.empty()) throw Malformed("a text in double quotes does not end");
    const char c = line.front();
    line.remove_prefix(1);
    if (c == '"') return text;
    text += c == '\\' ? takeEscape(line) : c;
  }
}

std::string unescapedKey(std::string_view key) {
  std::string result;
  while (!key.empty()) {
    const char c = key.front();
    key.remove_prefix(1);
    const bool isSlash = c == '\\' && key.starts_with('/');
    result += c == '\\' && !isSlash ? takeEscape(key) : isSlash ? '/' : c;
    if (isSlash) key.remove_prefix(1);
  }
  return result;
}

std::vector<Word> splitWords(std::string_view line) {
  std::vector<Word> words;
  while (!line.empty()) {
    if (line.front() == ' ') {
      line.remove_prefix(1);
    } else if (line.front() == '"') {
      words.push_back({takeQuoted(line), true});
      if (!line.empty() && line.front() != ' ')
        throw Malformed("a space is missing after a text in double quotes");
    } else {
      const std::string_view word = line.substr(0, line.find(' '));
      if (word.find('"') != std::string_view::npos)
        throw Malformed("a space is missing before a text in double quotes");
      words.push_back({std::string(word), false});
      line.remove_prefix(word.size());
    }
  }
  return words;
}

}  // namespace norvik::scenario
