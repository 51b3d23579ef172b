// Real numbers to decimal text and back, exact, and the same in every locale. The standard library's own
// conversion does not serve: libc++ cannot read a double with std::from_chars, its std::to_chars writes one
// on new systems only, and strtod and printf follow the locale of the process.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace norvik {

struct LeadingReal {
  double value;        // the double that is nearest to the text; of two, the one with the even significand
  std::size_t length;  // of the text that makes the number
  bool inRange;        // false where a number became zero or infinity because no double is near it
};

// The number that the text begins with: a minus or none, digits with a point or none, and an exponent or
// none; or inf, infinity, nan or nan(letters) in any case. Nothing where there is no number; no blanks and no
// plus before it.
std::optional<LeadingReal> leadingReal(std::string_view text);

enum class RealForm {
  shorter,   // with or without an exponent, whichever is shorter; of the same length, without
  plain,     // 1000000
  exponent,  // 1e+06
};

// The shortest text of that form that reads back as the same number; of several, the nearest to it. inf, nan
// with their sign.
std::string realText(double value, RealForm form);

}  // namespace norvik
