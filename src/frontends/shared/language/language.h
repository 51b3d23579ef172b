// Words in the language of the person. The English text in the source is the key of its translation, so that
// a text without a translation is shown in English. Knows no toolkit and no computer.
//
//   english("Apply")                                      marks a constant; shown with translated
//   translated(kApply)                                    the constant, or a text of the pane, in the
//   language sentence("Port {1} is taken by {2}.", {port, name})   with values; their order is the
//   translator's counted("{1} change", "{1} changes", count)           by number, as the language counts
//
// What is not for a person stays as it is: JSON, logs, names of settings, commands and options.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace norvik {

// Marks a text that is shown later, with `translated`. The text itself.
constexpr std::string_view english(std::string_view text) {
  return text;
}

// The text in the language of the person; the text itself where there is no translation.
std::string translated(std::string_view text);

// The translation with its values: "{1}" is the first. A value is put in as it is, whatever it holds.
std::string sentence(std::string_view text, std::initializer_list<std::string_view> values);

// The form for that number, which is also value {1}. Further values begin with {2}.
std::string counted(std::string_view one, std::string_view many, std::size_t number,
                    std::initializer_list<std::string_view> values = {});

}  // namespace norvik
