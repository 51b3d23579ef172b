// Reading: the text as a quotient of two whole numbers, divided to 62 bits and rounded once. Writing: the
// digits that distinguish the number from its two neighbours, by the method of Steele and White as Burger and
// Dybvig published it ("Printing Floating-Point Numbers Quickly and Accurately", 1996).
#include "src/server/mac/text/reals.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <utility>

#include "src/server/mac/text/natural.h"

namespace norvik {

namespace {

constexpr int kSignificandBits = std::numeric_limits<double>::digits;
constexpr uint64_t kLeadingBit = uint64_t{1} << (kSignificandBits - 1);
constexpr int kLeastExponent = -1074;  // of the last bit of the smallest doubles

static_assert(std::numeric_limits<double>::is_iec559 && kSignificandBits == 53);

// ---- Reading ------------------------------------------------------------------------------------------------

// A decimal number without its sign: the digits as a whole number, times ten to the exponent.
struct Decimal {
  std::string digits;  // without zeros in front
  int64_t exponent = 0;
};

// No two neighbouring doubles have a middle with more digits; of what follows it counts only whether it is
// zero.
constexpr std::size_t kMostDigits = 800;

bool isDecimalDigit(char c) {
  return c >= '0' && c <= '9';
}

char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool beginsWith(std::string_view text, std::string_view lowerCaseWord) {
  return text.size() >= lowerCaseWord.size() &&
         std::ranges::equal(text.substr(0, lowerCaseWord.size()), lowerCaseWord, {}, lowerCase);
}

// The length of a word for a number that has no digits, 0 for none.
std::size_t lengthOfWord(std::string_view text) {
  if (beginsWith(text, "infinity")) return 8;
  if (beginsWith(text, "inf")) return 3;
  if (!beginsWith(text, "nan")) return 0;
  if (!text.substr(3).starts_with('(')) return 3;
  const std::size_t end =
      text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_", 4);
  return end != std::string_view::npos && text[end] == ')' ? end + 1 : 3;
}

// Reads digits with a point or none into `decimal`; returns the length, 0 where there is no digit.
std::size_t readDigits(std::string_view text, Decimal& decimal) {
  std::size_t i = 0;
  bool anyDigit = false;
  bool afterPoint = false;
  bool restIsZero = true;
  for (; i < text.size() && (isDecimalDigit(text[i]) || (text[i] == '.' && !afterPoint)); ++i) {
    if (text[i] == '.') {
      afterPoint = true;
      continue;
    }
    anyDigit = true;
    const bool counts = !decimal.digits.empty() || text[i] != '0';
    const bool fits = decimal.digits.size() < kMostDigits;
    if (counts && fits) decimal.digits += text[i];
    if (!fits) restIsZero = restIsZero && text[i] == '0';
    decimal.exponent += (fits ? 0 : 1) - (afterPoint ? 1 : 0);
  }
  if (!restIsZero) {
    decimal.digits += '1';
    --decimal.exponent;
  }
  return anyDigit ? i : 0;
}

// Reads an exponent into `exponent`; returns the length, 0 where there is none.
std::size_t readExponent(std::string_view text, int64_t& exponent) {
  constexpr int64_t kMostExponent = 1'000'000'000'000;  // more than any text has digits to make up for
  if (text.empty() || lowerCase(text.front()) != 'e') return 0;
  std::size_t i = 1;
  const bool negative = i < text.size() && text[i] == '-';
  if (negative || (i < text.size() && text[i] == '+')) ++i;
  const std::size_t firstDigit = i;
  int64_t value = 0;
  for (; i < text.size() && isDecimalDigit(text[i]); ++i)
    value = std::min(value * 10 + (text[i] - '0'), kMostExponent);
  if (i == firstDigit) return 0;
  exponent += negative ? -value : value;
  return i;
}

// `bits` times two to `exponent`, and a little more if `more`, as the nearest double. `bits` has at least 62.
double rounded(uint64_t bits, int exponent, bool more) {
  const int top = exponent + static_cast<int>(std::bit_width(bits)) - 1;
  const int last = std::max(top - (kSignificandBits - 1), kLeastExponent);
  const int dropped = last - exponent;
  if (dropped > 63) return 0;
  const uint64_t half = uint64_t{1} << (dropped - 1);
  const uint64_t rest = bits & (2 * half - 1);
  uint64_t kept = bits >> dropped;
  if (rest > half || (rest == half && (more || kept % 2 == 1))) ++kept;
  return std::ldexp(static_cast<double>(kept), last);
}

// The quotient as the nearest double.
double quotient(Natural numerator, Natural denominator) {
  constexpr int kBits = 62;
  const int widths = numerator.bitWidth() - denominator.bitWidth();
  if (widths > 0)
    denominator.shiftLeft(widths);
  else
    numerator.shiftLeft(-widths);
  uint64_t bits = 0;
  for (int i = 0; i <= kBits; ++i) {
    bits <<= 1;
    if (numerator >= denominator) {
      numerator.subtract(denominator);
      bits |= 1;
    }
    numerator.shiftLeft(1);
  }
  return rounded(bits, widths - kBits, !numerator.isZero());
}

double valueOf(const Decimal& decimal) {
  // The exponent of 0.DIGITS; beyond these no double is near.
  constexpr int64_t kLargest = 309;
  constexpr int64_t kSmallest = -323;
  const int64_t magnitude = decimal.exponent + static_cast<int64_t>(decimal.digits.size());
  if (decimal.digits.empty() || magnitude < kSmallest) return 0;
  if (magnitude > kLargest) return std::numeric_limits<double>::infinity();
  Natural numerator(0);
  for (const char digit : decimal.digits) numerator.multiplyAdd(10, static_cast<uint32_t>(digit - '0'));
  Natural denominator(1);
  (decimal.exponent < 0 ? denominator : numerator)
      .multiplyByPowerOfTen(static_cast<int>(std::abs(decimal.exponent)));
  return quotient(std::move(numerator), std::move(denominator));
}

// ---- Writing ------------------------------------------------------------------------------------------------

// A number above 0 as 0.DIGITS times ten to `point`.
struct Digits {
  std::string digits;
  int point;
};

// What remains to be written of a number, and how far it may be off before it reads back as a neighbour; each
// as a part of `unit`.
struct Remainder {
  Natural rest, unit, above, below;
  bool edgesCount;  // whether a number that far off reads back as this one

  void timesTen() {
    for (Natural* part : {&rest, &above, &below}) part->multiplyAdd(10, 0);
  }
  bool reachesBelow() const { return edgesCount ? rest <= below : rest < below; }
  bool reachesAbove() const {
    Natural most = rest;
    most.add(above);
    return edgesCount ? most >= unit : most > unit;
  }
  // The whole units in it, which it loses.
  int takeUnits() {
    int units = 0;
    for (; rest >= unit; ++units) rest.subtract(unit);
    return units;
  }
  // Whether it is nearer to one unit than to none; in the middle, where `orEqual`.
  bool isMoreThanHalf(bool orEqual) const {
    Natural twice = rest;
    twice.shiftLeft(1);
    return twice > unit || (orEqual && twice == unit);
  }
};

struct Binary {
  uint64_t significand;
  int exponent;
};

Binary binaryOf(double positive) {
  const auto bits = std::bit_cast<uint64_t>(positive);
  const auto field = static_cast<int>(bits >> (kSignificandBits - 1));
  const uint64_t fraction = bits & (kLeadingBit - 1);
  if (field == 0) return {fraction, kLeastExponent};
  return {fraction | kLeadingBit, kLeastExponent + field - 1};
}

Remainder remainderOf(const Binary& number) {
  // Below a power of two its neighbour is half as far away as above.
  const bool isUneven = number.significand == kLeadingBit && number.exponent > kLeastExponent;
  const int up = std::max(number.exponent, 0);
  const int down = std::max(-number.exponent, 0);
  const int scale = isUneven ? 2 : 1;
  Remainder all{Natural(number.significand), Natural(1), Natural(1), Natural(1), number.significand % 2 == 0};
  all.rest.shiftLeft(up + scale);
  all.unit.shiftLeft(down + scale);
  all.above.shiftLeft(up + scale - 1);
  all.below.shiftLeft(up);
  return all;
}

Digits shortestDigits(double positive) {
  Remainder left = remainderOf(binaryOf(positive));
  // The logarithm is at most a little off, and then too small.
  int point = static_cast<int>(std::ceil(std::log10(positive) - 1e-10));
  if (point >= 0)
    left.unit.multiplyByPowerOfTen(point);
  else
    for (Natural* part : {&left.rest, &left.above, &left.below}) part->multiplyByPowerOfTen(-point);
  if (left.reachesAbove())
    ++point;
  else
    left.timesTen();

  std::string digits;
  for (;; left.timesTen()) {
    const int digit = left.takeUnits();
    const bool below = left.reachesBelow();
    const bool above = left.reachesAbove();
    const bool roundUp = above && (!below || left.isMoreThanHalf(digit % 2 == 1));
    digits += static_cast<char>('0' + digit + (roundUp ? 1 : 0));
    if (below || above) return {digits, point};
  }
}

// All digits of a whole number, where the shortest would have to be filled up with zeros.
std::string wholeDigits(double positive) {
  const Binary number = binaryOf(positive);
  if (number.exponent <= 0) return Natural(number.significand >> -number.exponent).decimalDigits();
  Natural whole(number.significand);
  whole.shiftLeft(number.exponent);
  return whole.decimalDigits();
}

std::string plainText(double positive, const Digits& number) {
  const auto count = static_cast<int>(number.digits.size());
  if (number.point >= count) return wholeDigits(positive);
  if (number.point <= 0)
    return "0." + std::string(static_cast<std::size_t>(-number.point), '0') + number.digits;
  const auto point = static_cast<std::size_t>(number.point);
  return number.digits.substr(0, point) + '.' + number.digits.substr(point);
}

std::string exponentText(const Digits& number) {
  const int exponent = number.point - 1;
  const std::string size = std::to_string(std::abs(exponent));
  std::string text = number.digits.substr(0, 1);
  if (number.digits.size() > 1) text += '.' + number.digits.substr(1);
  text += exponent < 0 ? "e-" : "e+";
  return text + (size.size() < 2 ? "0" : "") + size;
}

std::string positiveText(double positive, RealForm form) {
  if (std::isnan(positive)) return "nan";
  if (std::isinf(positive)) return "inf";
  if (positive == 0) return form == RealForm::exponent ? "0e+00" : "0";
  const Digits number = shortestDigits(positive);
  if (form == RealForm::plain) return plainText(positive, number);
  std::string withExponent = exponentText(number);
  if (form == RealForm::exponent) return withExponent;
  std::string plain = plainText(positive, number);
  return plain.size() <= withExponent.size() ? plain : withExponent;
}

}  // namespace

std::optional<LeadingReal> leadingReal(std::string_view text) {
  const bool negative = text.starts_with('-');
  const std::size_t sign = negative ? 1 : 0;
  const std::string_view number = text.substr(sign);
  const double direction = negative ? -1 : 1;
  if (const std::size_t length = lengthOfWord(number)) {
    const bool isNan = beginsWith(number, "nan");
    const double value =
        isNan ? std::numeric_limits<double>::quiet_NaN() : std::numeric_limits<double>::infinity();
    return LeadingReal{std::copysign(value, direction), sign + length, true};
  }
  Decimal decimal;
  std::size_t length = readDigits(number, decimal);
  if (length == 0) return std::nullopt;
  length += readExponent(number.substr(length), decimal.exponent);
  const double value = valueOf(decimal);
  const bool inRange = decimal.digits.empty() || (value != 0 && std::isfinite(value));
  return LeadingReal{std::copysign(value, direction), sign + length, inRange};
}

std::string realText(double value, RealForm form) {
  return (std::signbit(value) ? "-" : "") + positiveText(std::fabs(value), form);
}

}  // namespace norvik
