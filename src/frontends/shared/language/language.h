// Words in the language of the person. The English text in the source is the key of its translation, so that
// a text without a translation is shown in English. Knows no toolkit and no computer.
//
//   english("Apply")                                     marks a constant; shown with translated
//   translated(kApply)                                   the constant in the language
//   sentence("Port {1} is taken by {2}.", {port, name})  with values; their order is the translator's
//   counted("{1} change", "{1} changes", count)          by number, as the language counts
//
// What is not for a person stays as it is: JSON, logs, names of settings, commands and options. The language
// is chosen once, when a program starts: choice.h. Texts of the pane module are shown with paneText:
// pane_texts.h.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/language/catalogue.h"

namespace norvik {

// Marks a text that is shown later, with `translated`. The text itself.
constexpr const char* english(const char* text) {
  return text;
}

// Speaks the language of a catalogue from now on, or English without one. Not while another thread speaks.
void speak(const std::optional<Catalogue>& catalogue);

// The text in the language of the person; the text itself where there is no translation.
std::string translated(std::string_view text);

// The translation with its values: "{1}" is the first. A value is put in as it is, whatever it holds.
std::string sentence(std::string_view text, std::initializer_list<std::string_view> values);

// Several things in words: "a", "a and b", "a, b and c". The things are put in as they are.
std::string allOf(const std::vector<std::string>& things);
// The same as a choice: "a, b or c".
std::string oneOf(const std::vector<std::string>& things);

// Two sentences, one behind the other; the other one alone where one is empty.
std::string joinedSentences(std::string_view first, std::string_view second);

// Marks a counted text that is shown later: "{1} change" and "{1} changes".
struct CountedText {
  const char* one;
  const char* many;
};
constexpr CountedText englishCounted(const char* one, const char* many) {
  return {one, many};
}

// The form for that number, which is also value {1}. Further values begin with {2}.
std::string counted(std::string_view one, std::string_view many, std::size_t number,
                    std::initializer_list<std::string_view> values = {});
std::string counted(const CountedText& text, std::size_t number,
                    std::initializer_list<std::string_view> values = {});

}  // namespace norvik
