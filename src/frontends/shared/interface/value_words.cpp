// The last entry that begins at the value or below it.
#include "src/frontends/shared/interface/value_words.h"

#include "src/frontends/shared/language/language.h"

namespace norvik {

std::string valueText(const ControlDescription& slider, int64_t value) {
  std::string number = std::to_string(value);
  if (slider.valueWords.empty()) return number;
  return sentence("{1} of {2}", {number, std::to_string(static_cast<int64_t>(*slider.maximum))});
}

std::string valueWords(const ControlDescription& slider, int64_t value) {
  const auto at = static_cast<double>(value);
  if (at > slider.maximum) return {};
  std::string words;
  for (const ValueWords& entry : slider.valueWords) {
    if (entry.from <= at) words = entry.words;
  }
  return words.empty() ? words : translated(words);
}

std::string spokenValue(const ControlDescription& slider, int64_t value) {
  const std::string words = valueWords(slider, value);
  if (words.empty()) return valueText(slider, value);
  return sentence("{1} of {2}, {3}",
                  {std::to_string(value), std::to_string(static_cast<int64_t>(*slider.maximum)), words});
}

}  // namespace norvik
