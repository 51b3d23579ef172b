// The texts of single values in the XML format: base64, dates, numbers. Knows nothing of elements.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/property_list.h"

namespace norvik {

// The furthest moment in either direction that is a date, in seconds from 2001: beyond it a double cannot
// represent every second, so a text could not preserve it.
inline constexpr double kMaxDateSeconds = 9007199254740992.0;

// Whether a number of seconds is a date: finite and within kMaxDateSeconds.
bool isDate(double seconds);

// An integer as a list holds it: signed where it fits.
PropertyList integerOf(uint64_t magnitude, bool negative);

// The parsers return nothing for a text that is not entirely a value of the kind; white space around it is
// allowed.
std::optional<PropertyList> parseInteger(std::string_view text);  // decimal, or hexadecimal after 0x
std::optional<double> parseReal(std::string_view text);           // also nan, inf, infinity
std::optional<double> parseDate(std::string_view text);           // 2001-01-01T00:00:00Z
std::optional<std::string> parseBase64(std::string_view text);    // white space anywhere

std::string formatReal(double value);    // the shortest text that reads back as the same number
std::string formatDate(double seconds);  // the fraction of a second is dropped, toward the past
std::string formatBase64(std::string_view bytes);

}  // namespace norvik
