// Looks texts up and puts values in.
#include "src/frontends/shared/language/language.h"

#include <charconv>
#include <vector>

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

}  // namespace

std::string translated(std::string_view text) {
  return std::string(text);
}

std::string sentence(std::string_view text, std::initializer_list<std::string_view> values) {
  return withValues(translated(text), values);
}

std::string counted(std::string_view one, std::string_view many, std::size_t number,
                    std::initializer_list<std::string_view> values) {
  const std::string digits = std::to_string(number);
  std::vector<std::string_view> all{digits};
  all.insert(all.end(), values);
  return withValues(translated(number == 1 ? one : many), all);
}

}  // namespace norvik
