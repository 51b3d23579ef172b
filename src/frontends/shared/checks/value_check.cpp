// How a value is read, for each kind of control.
#include "src/frontends/shared/checks/value_check.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

struct BoxWord {
  std::string_view word;
  int64_t state;
};
constexpr BoxWord kBoxWords[] = {{"on", 1},  {"yes", 1}, {"true", 1},  {"1", 1},
                                 {"off", 0}, {"no", 0},  {"false", 0}, {"0", 0}};

std::optional<int64_t> boxState(std::string_view text) {
  const std::string word = folded(text);
  for (const BoxWord& known : kBoxWords) {
    if (known.word == word) return known.state;
  }
  return std::nullopt;
}

std::optional<int64_t> position(const std::vector<std::string>& words, std::string_view text) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (folded(words[i]) == folded(text)) return static_cast<int64_t>(i);
  }
  return std::nullopt;
}

std::optional<int64_t> itemIndex(const ControlDescription& popUp, std::string_view text) {
  if (const auto index = position(popUp.items, text)) return index;
  const auto number = wholeNumber(text);
  if (!number || *number < 1 || *number > static_cast<int64_t>(popUp.items.size())) return std::nullopt;
  return *number - 1;
}

std::optional<int64_t> numberInRange(const ControlDescription& control, std::string_view text) {
  const auto number = wholeNumber(trimmed(text, kBlanks));
  if (!number) return std::nullopt;
  const auto value = static_cast<double>(*number);
  if (control.minimum && value < *control.minimum) return std::nullopt;
  if (control.maximum && value > *control.maximum) return std::nullopt;
  return number;
}

std::vector<std::string> choices(const SettingDescription& setting) {
  std::vector<std::string> words;
  for (const ControlDescription* button : setting.controls) words.push_back(button->choice);
  return words;
}

std::string numberText(double number) {
  return std::to_string(static_cast<int64_t>(number));
}

}  // namespace

std::string folded(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = c == '-' ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

std::optional<int64_t> wholeNumber(std::string_view text) {
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (digits.empty() || !std::ranges::all_of(digits, isDigit)) return std::nullopt;
  int64_t number = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc()) return number;
  return text.starts_with('-') ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
}

std::optional<int64_t> checkedValue(const SettingDescription& setting, std::string_view text) {
  switch (setting.first().kind) {
    case ControlKind::checkBox:
      return boxState(text);
    case ControlKind::radioButton:
      return position(choices(setting), text);
    case ControlKind::popUp:
      return itemIndex(setting.first(), text);
    case ControlKind::slider:
    case ControlKind::textField:
      return numberInRange(setting.first(), text);
    default:
      return std::nullopt;
  }
}

std::string acceptedValues(const SettingDescription& setting) {
  switch (setting.first().kind) {
    case ControlKind::checkBox:
      return oneOf({"on", "off"});
    case ControlKind::radioButton:
      return oneOf(choices(setting));
    case ControlKind::popUp:
      return oneOf(setting.first().items);
    default:
      return rangeInWords(setting.first());
  }
}

std::string rangeInWords(const ControlDescription& control) {
  if (control.minimum && control.maximum)
    return sentence("a whole number from {1} to {2}",
                    {numberText(*control.minimum), numberText(*control.maximum)});
  if (control.minimum) return sentence("a whole number from {1}", {numberText(*control.minimum)});
  if (control.maximum) return sentence("a whole number to {1}", {numberText(*control.maximum)});
  return translated("a whole number");
}

std::string listInWords(const std::vector<std::string>& words, std::string_view conjunction) {
  return conjunction == "or" ? oneOf(words) : allOf(words);
}

}  // namespace norvik
