// Look-up in property lists and the conversions of their values to what a setting wants. Pure computation on
// the value given.
#include "src/server/mac/platform/property_list.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

struct SignAndRest {
  bool negative;
  std::string_view rest;
};

// What every number in a text begins with: white space and at most one sign.
SignAndRest skipSpaceAndSign(std::string_view text) {
  text = withoutLeading(text, kCSpace);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  return {negative, text};
}

// Reduced modulo 2^64 in floating point first, where it is exact: a conversion of a value out of range would
// be undefined.
int64_t truncated(double value) {
  if (!std::isfinite(value)) return 0;
  constexpr double kTwoTo64 = 18446744073709551616.0;
  double magnitude = std::fmod(std::trunc(std::fabs(value)), kTwoTo64);
  auto bits = static_cast<uint64_t>(magnitude);
  return static_cast<int64_t>(value < 0 ? uint64_t{0} - bits : bits);
}

bool startsTrue(std::string_view text) {
  text = withoutLeading(skipSpaceAndSign(text).rest, "0");
  return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

}  // namespace

const PropertyList* PropertyList::find(std::string_view key) const {
  const auto* dictionary = as<Dictionary>();
  if (!dictionary) return nullptr;
  auto found = dictionary->find(key);
  return found == dictionary->end() ? nullptr : &found->second;
}

PropertyList* PropertyList::find(std::string_view key) {
  auto* dictionary = as<Dictionary>();
  if (!dictionary) return nullptr;
  auto found = dictionary->find(key);
  return found == dictionary->end() ? nullptr : &found->second;
}

int64_t integerValue(const PropertyList* value) {
  if (!value) return 0;
  if (const auto* integer = value->as<int64_t>()) return *integer;
  if (const auto* large = value->as<uint64_t>()) return static_cast<int64_t>(*large);
  if (const auto* boolean = value->as<bool>()) return *boolean ? 1 : 0;
  if (const auto* real = value->as<double>()) return truncated(*real);
  if (const auto* text = value->as<std::string>()) return leadingInteger(*text);
  return 0;
}

int32_t intValue(const PropertyList* value) {
  return static_cast<int32_t>(static_cast<uint64_t>(integerValue(value)) & 0xffffffffu);
}

bool boolValue(const PropertyList* value) {
  if (!value) return false;
  if (const auto* boolean = value->as<bool>()) return *boolean;
  if (const auto* integer = value->as<int64_t>()) return *integer != 0;
  if (const auto* large = value->as<uint64_t>()) return *large != 0;
  // A fraction is not zero, and neither is what is no number at all.
  if (const auto* real = value->as<double>()) return *real != 0;
  if (const auto* text = value->as<std::string>()) return startsTrue(*text);
  return false;
}

int64_t leadingInteger(std::string_view text) {
  const auto [negative, digits] = skipSpaceAndSign(text);
  uint64_t bits = 0;
  for (const char c : digits) {
    if (!isDigit(c)) break;
    bits = bits * 10 + static_cast<uint64_t>(c - '0');
  }
  return static_cast<int64_t>(negative ? uint64_t{0} - bits : bits);
}

int32_t clampedLeadingInteger(std::string_view text) {
  using Limits = std::numeric_limits<int32_t>;
  const auto [negative, digits] = skipSpaceAndSign(text);
  int64_t number = 0;
  for (const char c : digits) {
    if (!isDigit(c) || number > Limits::max()) break;
    number = number * 10 + (c - '0');
  }
  return static_cast<int32_t>(std::clamp<int64_t>(negative ? -number : number, Limits::min(), Limits::max()));
}

}  // namespace norvik
