// Quoting of texts that may be missing, and decimal forms.
#include "src/adapters/simulated/text_form.h"

#include <array>
#include <charconv>
#include <cmath>

#include "src/server/mac/text/escape.h"

namespace norvik {

std::string quotedOrNull(const char* text) {
  return text == nullptr ? "null" : quoted(text);
}

std::string shortestForm(double number) {
  const double size = std::fabs(number);
  const bool plain = size == 0 || (size >= 1e-4 && size < 1e16);
  std::array<char, 64> form{};
  const auto end = std::to_chars(form.data(), form.data() + form.size(), number,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific)
                       .ptr;
  return {form.data(), end};
}

}  // namespace norvik
