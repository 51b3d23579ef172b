// Looks texts up and puts values in.
#include "src/frontends/shared/language/language.h"

#include <charconv>

namespace norvik {

namespace {

// The number between braces at that place, from 1; 0 where there is none.
std::size_t numberAt(std::string_view text, std::size_t brace, std::size_t& end) {
  std::size_t number = 0;
  const char* last = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data() + brace + 1, last, number);
  if (error != std::errc() || behind == last || *behind != '}') return 0;
  end = static_cast<std::size_t>(behind - text.data()) + 1;
  return number;
}

std::string withValues(std::string_view text, const std::vector<std::string_view>& values) {
  std::string result;
  std::size_t at = 0;
  while (at < text.size()) {
    std::size_t end = 0;
    const std::size_t number = text[at] == '{' ? numberAt(text, at, end) : 0;
    if (number == 0 || number > values.size()) {
      result += text[at++];
      continue;
    }
    result += values[number - 1];
    at = end;
  }
  return result;
}

// What is spoken; nothing for English.
std::optional<Catalogue>& current() {
  static std::optional<Catalogue> catalogue;
  return catalogue;
}

std::string_view lookedUp(std::string_view text) {
  // The empty text is the key of the catalogue's header.
  return current() && !text.empty() ? current()->find(text).value_or(text) : text;
}

// "a, b and c": the last two by their pattern, those before by the comma's.
std::string listed(const std::vector<std::string>& things, std::string_view lastTwo) {
  if (things.empty()) return "";
  std::string list = things.front();
  for (std::size_t i = 1; i < things.size(); ++i) {
    list =
        sentence(i + 1 < things.size() ? std::string_view(english("{1}, {2}")) : lastTwo, {list, things[i]});
  }
  return list;
}

}  // namespace

void speak(const std::optional<Catalogue>& catalogue) {
  current() = catalogue;
}

std::string translated(std::string_view text) {
  return std::string(lookedUp(text));
}

std::string sentence(std::string_view text, std::initializer_list<std::string_view> values) {
  return withValues(lookedUp(text), values);
}

std::string counted(std::string_view one, std::string_view many, std::size_t number,
                    std::initializer_list<std::string_view> values) {
  const std::string digits = std::to_string(number);
  std::vector<std::string_view> all{digits};
  all.insert(all.end(), values);
  const auto found = current() ? current()->find(one, number) : std::nullopt;
  return withValues(found.value_or(number == 1 ? one : many), all);
}

std::string counted(const CountedText& text, std::size_t number,
                    std::initializer_list<std::string_view> values) {
  return counted(text.one, text.many, number, values);
}

std::string allOf(const std::vector<std::string>& things) {
  return listed(things, english("{1} and {2}"));
}

std::string oneOf(const std::vector<std::string>& things) {
  return listed(things, english("{1} or {2}"));
}

std::string joinedSentences(std::string_view first, std::string_view second) {
  if (first.empty() || second.empty()) return std::string(first.empty() ? second : first);
  return sentence(english("{1} {2}"), {first, second});
}

}  // namespace norvik
