// Single values to text and back, the same in every locale.
#include "src/adapters/property_lists/scalars.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "src/server/mac/text/reals.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr int64_t kSecondsPerDay = 86400;
constexpr int64_t kDaysPerEra = 146097;        // an era is 400 years
constexpr int64_t kEpochFromEraZero = 730791;  // days from 0000-03-01 to 2001-01-01

template <typename Integer>
std::optional<Integer> parseWhole(std::string_view text, int base = 10) {
  Integer number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// Removes a sign from the text; true for a minus.
bool takeSign(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool negative = text.front() == '-';
  text.remove_prefix(1);
  return negative;
}

struct CivilDate {
  int64_t year, month, day;
};

// Years are counted from March here, so that the leap day is the last of its year.
int64_t daysFrom2001(const CivilDate& date) {
  const int64_t year = date.month <= 2 ? date.year - 1 : date.year;
  const int64_t era = (year >= 0 ? year : year - 399) / 400;
  const int64_t yearOfEra = year - era * 400;
  const int64_t dayOfYear = (153 * ((date.month + 9) % 12) + 2) / 5 + date.day - 1;
  const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * kDaysPerEra + dayOfEra - kEpochFromEraZero;
}

CivilDate civilDate(int64_t daysFrom2001) {
  const int64_t days = daysFrom2001 + kEpochFromEraZero;
  const int64_t era = (days >= 0 ? days : days - (kDaysPerEra - 1)) / kDaysPerEra;
  const int64_t dayOfEra = days - era * kDaysPerEra;
  const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int64_t month = (5 * dayOfYear + 2) / 153;
  CivilDate date{yearOfEra + era * 400, (month + 2) % 12 + 1, dayOfYear - (153 * month + 2) / 5 + 1};
  if (date.month <= 2) ++date.year;
  return date;
}

bool isLeapYear(int64_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int64_t daysInMonth(int64_t year, int64_t month) {
  constexpr std::array<int64_t, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

// Removes a number of at least `digits` decimal digits (exactly as many unless it is a year) and the
// character that must follow it.
std::optional<int64_t> takeField(std::string_view& text, std::size_t digits, bool year, char after) {
  const std::size_t end = text.find_first_not_of("0123456789");
  if (end == std::string_view::npos || text[end] != after) return std::nullopt;
  if (end < digits || (!year && end > digits)) return std::nullopt;
  auto number = parseWhole<int64_t>(text.substr(0, end));
  text.remove_prefix(end + 1);
  return number;
}

}  // namespace

bool isDate(double seconds) {
  return std::isfinite(seconds) && std::fabs(seconds) <= kMaxDateSeconds;
}

PropertyList integerOf(uint64_t magnitude, bool negative) {
  if (negative) return static_cast<int64_t>(uint64_t{0} - magnitude);
  if (magnitude > static_cast<uint64_t>(INT64_MAX)) return magnitude;
  return static_cast<int64_t>(magnitude);
}

std::optional<PropertyList> parseInteger(std::string_view text) {
  text = trimmed(text, kBlanks);
  const bool negative = takeSign(text);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  const auto magnitude = parseWhole<uint64_t>(hexadecimal ? text.substr(2) : text, hexadecimal ? 16 : 10);
  if (!magnitude || (negative && *magnitude > uint64_t{1} << 63)) return std::nullopt;
  return integerOf(*magnitude, negative);
}

std::optional<double> parseReal(std::string_view text) {
  text = trimmed(text, kBlanks);
  const bool negative = takeSign(text);
  if (text.starts_with('-')) return std::nullopt;
  const auto number = leadingReal(text);
  if (!number || number->length != text.size()) return std::nullopt;
  return negative ? -number->value : number->value;
}

std::optional<double> parseDate(std::string_view text) {
  text = trimmed(text, kBlanks);
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const auto year = takeField(text, 4, true, '-');
  const auto month = year ? takeField(text, 2, false, '-') : std::nullopt;
  const auto day = month ? takeField(text, 2, false, 'T') : std::nullopt;
  const auto hour = day ? takeField(text, 2, false, ':') : std::nullopt;
  const auto minute = hour ? takeField(text, 2, false, ':') : std::nullopt;
  const auto second = minute ? takeField(text, 2, false, 'Z') : std::nullopt;
  if (!second || !text.empty()) return std::nullopt;
  constexpr int64_t kMaxYear = 400'000'000;
  if (*year > kMaxYear || *month < 1 || *month > 12) return std::nullopt;
  CivilDate date{negative ? -*year : *year, *month, *day};
  if (date.day < 1 || date.day > daysInMonth(date.year, date.month)) return std::nullopt;
  // A leap second, 60, is the first second of the next minute.
  if (*hour > 23 || *minute > 59 || *second > 60) return std::nullopt;
  auto seconds =
      static_cast<double>(daysFrom2001(date) * kSecondsPerDay + *hour * 3600 + *minute * 60 + *second);
  if (!isDate(seconds)) return std::nullopt;
  return seconds;
}

std::optional<std::string> parseBase64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  uint32_t bits = 0;
  int count = 0;
  bool padded = false;
  for (const char c : text) {
    if (kBlanks.find(c) != std::string_view::npos) continue;
    const std::size_t digit = kBase64.find(c);
    padded = padded || c == '=';
    if (padded ? c != '=' : digit == std::string_view::npos) return std::nullopt;
    if (padded) continue;
    bits = (bits << 6) | static_cast<uint32_t>(digit);
    if (++count % 4 != 1)
      bytes += static_cast<char>(static_cast<unsigned char>(bits >> (6 - 2 * ((count - 1) % 4))));
  }
  if (count % 4 == 1) return std::nullopt;
  return bytes;
}

std::string formatReal(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-infinity" : "+infinity";
  std::string shortest = realText(value, RealForm::shorter);
  // With a point or an exponent, it is a real even to readers that guess the type.
  if (shortest.find_first_of(".e") == std::string::npos) shortest += ".0";
  return shortest;
}

std::string formatDate(double seconds) {
  const auto whole = static_cast<int64_t>(std::floor(seconds));
  const int64_t days = whole / kSecondsPerDay - (whole % kSecondsPerDay < 0 ? 1 : 0);
  const int64_t rest = whole - days * kSecondsPerDay;
  CivilDate date = civilDate(days);
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "%s%04lld-%02lld-%02lldT%02lld:%02lld:%02lldZ",
                date.year < 0 ? "-" : "", static_cast<long long>(date.year < 0 ? -date.year : date.year),
                static_cast<long long>(date.month), static_cast<long long>(date.day),
                static_cast<long long>(rest / 3600), static_cast<long long>(rest / 60 % 60),
                static_cast<long long>(rest % 60));
  return text.data();
}

std::string formatBase64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t bits = 0;
    for (std::size_t j = 0; j < 3; ++j)
      bits = (bits << 8) | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0u);
    for (std::size_t j = 0; j < 4; ++j)
      text += i + j > bytes.size() ? '=' : kBase64[(bits >> (18 - 6 * j)) & 0x3F];
  }
  return text;
}

}  // namespace norvik
