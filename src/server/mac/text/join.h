// Texts one behind the other.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace norvik {

// The texts of a range with `separator` between them; `textOf` gives the text of an element.
template <typename Range, typename TextOf = std::identity>
std::string joined(const Range& range, std::string_view separator, TextOf textOf = {}) {
  std::string text;
  bool isFirst = true;
  for (const auto& element : range) {
    if (!isFirst) text += separator;
    text += std::invoke(textOf, element);
    isFirst = false;
  }
  return text;
}

}  // namespace norvik
